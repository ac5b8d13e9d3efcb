#pragma once

#include "ui/settings/SettingsContext.h"

#include <QWidget>

namespace deskmark {

// The five hot keys, each with its recorder; the two with a built-in default can go
// back to it.
class ShortcutsPane : public QWidget {
    Q_OBJECT
public:
    explicit ShortcutsPane(const SettingsContext& context, QWidget* parent = nullptr);
};

} // namespace deskmark
