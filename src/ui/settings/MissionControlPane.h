#pragma once

#include "ui/settings/SettingsContext.h"

#include <QWidget>

namespace deskmark {

// The overview label settings, with what they mean on this desktop.
class MissionControlPane : public QWidget {
    Q_OBJECT
public:
    explicit MissionControlPane(const SettingsContext& context, QWidget* parent = nullptr);
};

} // namespace deskmark
