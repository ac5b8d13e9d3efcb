#pragma once

#include "core/app/PresetMenuModel.h"
#include "core/model/HotKey.h"
#include "core/model/HotKeyAction.h"

#include <QMenu>

class QActionGroup;

#include <optional>

namespace deskmark {

// The status item's menu: the five actions the hot keys mirror, the preset quick-select
// submenu, About and Quit. It holds no decisions: the owner connects the actions and
// fills the preset submenu each time it is about to open.
class StatusMenu : public QMenu {
    Q_OBJECT
public:
    explicit StatusMenu(QWidget* parent = nullptr);

    // The name editor's item as the menu shows it.
    static QString nameTitle();

    QAction* nameAction() const { return nameAction_; }
    QAction* presetAction() const { return presetMenu_->menuAction(); }
    QAction* bookmarkAction() const { return bookmarkAction_; }
    QAction* switcherAction() const { return switcherAction_; }
    QAction* settingsAction() const { return settingsAction_; }
    QAction* aboutAction() const { return aboutAction_; }
    QAction* quitAction() const { return quitAction_; }
    QMenu* presetMenu() const { return presetMenu_; }

    void setPresetEntries(const QList<PresetMenuModel::Entry>& entries);
    // Shows key as the shortcut of action's item, or no shortcut. The text column gets
    // the Linux form ("Alt+Super+B"); the item's key sequence carries the same key to
    // panels that draw the menu themselves (DBusMenu).
    void showHotKey(HotKeyAction action, const std::optional<HotKey>& key);
    // Where the window manager owns the keys, the text column says that they are bound
    // in its configuration. Takes effect at the next showHotKey().
    void setKeysBoundByWindowManager(bool bound) { keysBoundByWindowManager_ = bound; }
    QAction* actionFor(HotKeyAction action) const;

Q_SIGNALS:
    void presetMenuAboutToShow();
    void presetChosen(const QString& presetID);

private:
    QAction* nameAction_;
    QMenu* presetMenu_;
    QActionGroup* presetGroup_ = nullptr;
    QAction* bookmarkAction_;
    QAction* switcherAction_;
    QAction* settingsAction_;
    QAction* aboutAction_;
    QAction* quitAction_;
    bool keysBoundByWindowManager_ = false;
};

} // namespace deskmark
