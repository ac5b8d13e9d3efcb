#pragma once

#include "platform/StatusItem.h"

#include <memory>

namespace deskmark {

// The panel item for this session: a StatusNotifierItem when a StatusNotifierWatcher is on
// the session bus (the panel then shows the title as a label), else an XEmbed tray icon,
// where there can be one (X11). Without either, the StatusNotifierItem, which registers
// when a watcher appears. Logs which one it chose. The caller owns the item; `parent` only
// places it in the object tree and must not be destroyed before the item.
std::unique_ptr<StatusItem> createStatusItem(QObject* parent = nullptr, bool xembedTray = true);

} // namespace deskmark
