#pragma once

#include "ui/settings/SettingsContext.h"

#include <QWidget>

class QVBoxLayout;

namespace deskmark {

// Every global corner-label setting, then the per-display overrides of each connected
// display: a check box per setting with its own control, and the display's reset.
class CornerOverlayPane : public QWidget {
    Q_OBJECT
public:
    explicit CornerOverlayPane(const SettingsContext& context, QWidget* parent = nullptr);

private:
    // Rebuilds the display sections when the connected displays change.
    void renderDisplays();
    QWidget* displaySection(const DisplayEntry& display);

    const SettingsContext& context_;
    QVBoxLayout* displaysLayout_;
    QList<DisplayEntry> shownDisplays_;
};

} // namespace deskmark
