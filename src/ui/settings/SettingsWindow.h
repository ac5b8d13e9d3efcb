#pragma once

#include "ui/settings/SettingsContext.h"

#include <QWidget>

class QListWidget;
class QStackedWidget;

namespace deskmark {

// The settings window: the list of panes on the left, the chosen pane on the right.
// Closing only hides it, so the owner keeps one window for the whole run and it opens
// again on the pane that was last shown.
class SettingsWindow : public QWidget {
    Q_OBJECT
public:
    enum class Pane {
        General,
        Shortcuts,
        Projects,
        Bookmarks,
        Spaces,
        ColorPresets,
        MissionControl,
        CornerOverlay,
        Permissions,
    };

    explicit SettingsWindow(SettingsContext context, QWidget* parent = nullptr);

    // Shows the window, or brings it to the front when it is open.
    void present();
    void showPane(Pane pane);
    Pane currentPane() const;
    QWidget* pane(Pane pane) const;

private:
    void applyFloating();

    SettingsContext context_;
    QListWidget* paneList_;
    QStackedWidget* stack_;
};

} // namespace deskmark
