#include "ui/StatusMenu.h"

#include "core/app/Language.h"

namespace deskmark {

StatusMenu::StatusMenu(QWidget* parent) : QMenu(parent) {
    nameAction_ = addAction(localized("現在のスペースの名前・カラーを編集",
                                      "Edit Current Space's Name && Color"));
    presetMenu_ = addMenu(localized("現在のスペースのカラープリセットをクイック選択",
                                    "Quick-Select Current Space's Color Preset"));
    bookmarkAction_ = addAction(localized("ブックマークを開く", "Open Bookmarks"));
    switcherAction_ = addAction(localized("Space を切り替え…", "Switch Space…"));
    settingsAction_ = addAction(localized("設定…", "Settings…"));
    addSeparator();
    aboutAction_ = addAction(localized("Deskmark について", "About Deskmark"));
    addSeparator();
    quitAction_ = addAction(localized("Deskmark を終了", "Quit Deskmark"));
    quitAction_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));

    connect(presetMenu_, &QMenu::aboutToShow, this, &StatusMenu::presetMenuAboutToShow);
}

void StatusMenu::setPresetEntries(const QList<PresetMenuModel::Entry>& entries) {
    presetMenu_->clear();
    for (const PresetMenuModel::Entry& entry : entries) {
        QAction* action = presetMenu_->addAction(entry.title);
        action->setCheckable(true);
        action->setChecked(entry.checked);
        const QString id = entry.presetID;
        connect(action, &QAction::triggered, this, [this, id] { Q_EMIT presetChosen(id); });
    }
}

} // namespace deskmark
