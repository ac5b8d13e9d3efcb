#pragma once

#include "ui/settings/SettingsContext.h"

#include <QWidget>

namespace deskmark {

// Interface language (with the restart it needs), appearance, start at login, the
// Space name in the panel and the level of the settings window.
class GeneralPane : public QWidget {
    Q_OBJECT
public:
    explicit GeneralPane(const SettingsContext& context, QWidget* parent = nullptr);
};

} // namespace deskmark
