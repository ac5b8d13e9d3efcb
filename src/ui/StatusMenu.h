#pragma once

#include "core/app/PresetMenuModel.h"

#include <QMenu>

namespace deskmark {

// The status item's menu: the five actions the hot keys mirror, the preset quick-select
// submenu, About and Quit. It holds no decisions: the owner connects the actions and
// fills the preset submenu each time it is about to open.
class StatusMenu : public QMenu {
    Q_OBJECT
public:
    explicit StatusMenu(QWidget* parent = nullptr);

    QAction* nameAction() const { return nameAction_; }
    QAction* presetAction() const { return presetMenu_->menuAction(); }
    QAction* bookmarkAction() const { return bookmarkAction_; }
    QAction* switcherAction() const { return switcherAction_; }
    QAction* settingsAction() const { return settingsAction_; }
    QAction* aboutAction() const { return aboutAction_; }
    QAction* quitAction() const { return quitAction_; }
    QMenu* presetMenu() const { return presetMenu_; }

    void setPresetEntries(const QList<PresetMenuModel::Entry>& entries);

Q_SIGNALS:
    void presetMenuAboutToShow();
    void presetChosen(const QString& presetID);

private:
    QAction* nameAction_;
    QMenu* presetMenu_;
    QAction* bookmarkAction_;
    QAction* switcherAction_;
    QAction* settingsAction_;
    QAction* aboutAction_;
    QAction* quitAction_;
};

} // namespace deskmark
