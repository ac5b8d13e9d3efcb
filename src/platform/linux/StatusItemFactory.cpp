#include "platform/linux/StatusItemFactory.h"

#include "core/app/SystemLog.h"
#include "platform/linux/StatusNotifierItem.h"
#include "platform/linux/TrayIconStatusItem.h"

namespace deskmark {

std::unique_ptr<StatusItem> createStatusItem(QObject* parent, bool xembedTray) {
    if (!xembedTray) {
        systemLog(QStringLiteral("Deskmark: status item: StatusNotifierItem (no XEmbed tray "
                                 "outside X11)"));
        return std::make_unique<StatusNotifierItem>(parent);
    }
    if (StatusNotifierItem::watcherAvailable()) {
        systemLog(QStringLiteral("Deskmark: status item: StatusNotifierItem (the panel has a "
                                 "StatusNotifierWatcher)"));
        return std::make_unique<StatusNotifierItem>(parent);
    }
    systemLog(QStringLiteral("Deskmark: status item: tray icon (no StatusNotifierWatcher on the "
                             "session bus)"));
    return std::make_unique<TrayIconStatusItem>(parent);
}

} // namespace deskmark
