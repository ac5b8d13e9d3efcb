#include "ui/StatusMenu.h"

#include "core/app/Language.h"
#include "core/app/LinuxShortcutText.h"
#include "core/app/WindowManagerKeyBinding.h"

#include <QActionGroup>
#include <QShortcut>

namespace deskmark {

namespace {
// Menu texts are shown as written: QMenu would take a lone '&' as a mnemonic mark.
QString literal(const QString& text) {
    QString escaped = text;
    return escaped.replace(QLatin1Char('&'), QLatin1String("&&"));
}
} // namespace

QString StatusMenu::nameTitle() {
    return localized("現在の Space の名前・カラーを編集…", "Edit Current Space's Name & Color…");
}

// The items that open a window end with "…".
StatusMenu::StatusMenu(QWidget* parent) : QMenu(parent) {
    nameAction_ = addAction(literal(nameTitle()));
    presetMenu_ = addMenu(localized("現在の Space のカラープリセットをクイック選択",
                                    "Quick-Select Current Space's Color Preset"));
    bookmarkAction_ = addAction(localized("ブックマークを開く…", "Open Bookmarks…"));
    switcherAction_ = addAction(localized("Space を切り替え…", "Switch Space…"));
    settingsAction_ = addAction(localized("設定…", "Settings…"));
    addSeparator();
    aboutAction_ = addAction(localized("Deskmark について", "About Deskmark"));
    addSeparator();
    quitAction_ = addAction(localized("Deskmark を終了", "Quit Deskmark"));
    quitAction_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    // Qt fires an item's shortcut only through a window that holds its menu, which this
    // popup has none of: the menu's own shortcut makes the key shown there work.
    auto* quitKey = new QShortcut(quitAction_->shortcut(), this);
    connect(quitKey, &QShortcut::activated, quitAction_, &QAction::trigger);

    connect(presetMenu_, &QMenu::aboutToShow, this, &StatusMenu::presetMenuAboutToShow);
}

// One preset at a time: the items are radio items of one exclusive group.
void StatusMenu::setPresetEntries(const QList<PresetMenuModel::Entry>& entries) {
    presetMenu_->clear();
    delete presetGroup_;
    presetGroup_ = new QActionGroup(presetMenu_);
    for (const PresetMenuModel::Entry& entry : entries) {
        QAction* action = presetMenu_->addAction(literal(entry.title));
        action->setCheckable(true);
        presetGroup_->addAction(action);
        action->setChecked(entry.checked);
        const QString id = entry.presetID;
        connect(action, &QAction::triggered, this, [this, id] { Q_EMIT presetChosen(id); });
    }
}

QAction* StatusMenu::actionFor(HotKeyAction action) const {
    switch (action) {
    case HotKeyAction::Name:
        return nameAction_;
    case HotKeyAction::Preset:
        return presetAction();
    case HotKeyAction::Settings:
        return settingsAction_;
    case HotKeyAction::Bookmark:
        return bookmarkAction_;
    case HotKeyAction::Switcher:
        break;
    }
    return switcherAction_;
}

void StatusMenu::showHotKey(HotKeyAction action, const std::optional<HotKey>& key) {
    QAction* item = actionFor(action);
    // QMenu draws what follows a tab as the shortcut, instead of the key sequence.
    const QString title = item->text().section(QLatin1Char('\t'), 0, 0);
    if (!key) {
        item->setText(title);
        item->setShortcut(QKeySequence());
        return;
    }
    item->setText(title + QLatin1Char('\t') +
                  (keysBoundByWindowManager_ ? WindowManagerKeyBinding::menuShortcut(*key)
                                             : linuxShortcutText(key->keyCode, key->modifiers)));
    const std::optional<QKeyCombination> combination = key->qtKeyCombination();
    item->setShortcut(combination ? QKeySequence(*combination) : QKeySequence());
}

} // namespace deskmark
