#include "ui/settings/ShortcutsPane.h"

#include "core/app/Language.h"
#include "core/settings/PermissionsPaneModel.h"
#include "ui/ShortcutRecorder.h"
#include "ui/settings/SettingControls.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace deskmark {

namespace {
struct Row {
    HotKeyAction action;
    std::optional<HotKey> builtIn;
};
} // namespace

ShortcutsPane::ShortcutsPane(const SettingsContext& context, QWidget* parent) : QWidget(parent) {
    SettingsStore& s = context.settings;
    QVBoxLayout* layout = SettingControls::page(this);
    auto* grid = new QGridLayout();
    layout->addLayout(grid);
    const QList<Row> rows{
        {HotKeyAction::Name, std::nullopt},
        {HotKeyAction::Preset, std::nullopt},
        {HotKeyAction::Settings, std::nullopt},
        {HotKeyAction::Bookmark, SettingsStore::defaultBookmarkHotKey},
        {HotKeyAction::Switcher, SettingsStore::defaultSwitcherHotKey},
    };
    for (int i = 0; i < rows.size(); ++i) {
        const Row& row = rows[i];
        auto* title = new QLabel(
            PermissionsPaneModel::actionTitle(row.action).replace(u'&', QStringLiteral("&&")),
            this);
        auto* recorder = new ShortcutRecorder(s, row.action, context.registrar, this);
        title->setBuddy(recorder);
        grid->addWidget(title, i, 0, Qt::AlignTop | Qt::AlignLeft);
        grid->addWidget(recorder, i, 1, Qt::AlignTop);
        if (!row.builtIn)
            continue;
        auto* restore = new QPushButton(localized("デフォルトに戻す", "Restore Default"), this);
        const auto render = [&s, restore, row] {
            restore->setEnabled(s.hotKey(row.action) != row.builtIn);
        };
        render();
        connect(restore, &QPushButton::clicked, this,
                [&s, row] { s.setHotKey(row.action, row.builtIn); });
        connect(&s,
                row.action == HotKeyAction::Bookmark ? &SettingsStore::bookmarkHotKeyChanged
                                                     : &SettingsStore::switcherHotKeyChanged,
                restore, render);
        grid->addWidget(restore, i, 2, Qt::AlignTop);
    }
    grid->setColumnStretch(1, 1);
    layout->addWidget(SettingControls::note(
        localized("ボタンを押してから新しい組み合わせを押してください。Esc で取り消します。",
                  "Click a shortcut, then press the new combination. Esc cancels."),
        this));
}

} // namespace deskmark
