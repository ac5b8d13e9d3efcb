#include "ui/settings/CornerOverlayPane.h"

#include "core/app/Language.h"
#include "core/model/SettingsStore.h"
#include "core/settings/SpacesPaneModel.h"
#include "ui/settings/CornerItemEditor.h"
#include "ui/settings/SettingControls.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace deskmark {

CornerOverlayPane::CornerOverlayPane(const SettingsContext& context, QWidget* parent)
    : QWidget(parent), context_(context) {
    QVBoxLayout* layout = SettingControls::page(this);
    layout->addWidget(SettingControls::note(SpacesPaneModel::unnamedNote(), this));
    auto* form = new QFormLayout();
    layout->addLayout(form);
    const CornerSettingsModel global(context.settings, std::nullopt);
    for (const CornerOverrideItem item : CornerSettingsModel::items()) {
        auto* editor = new CornerItemEditor(context.settings, global, item, this);
        if (CornerSettingsModel::kind(item) == CornerSettingsModel::Kind::Toggle)
            form->addRow(editor);
        else
            form->addRow(CornerSettingsModel::label(item), editor);
    }
    layout->addWidget(SettingControls::checkBox(
        context.settings,
        localized("全画面のウインドウの上ではラベルを隠す", "Hide labels over full-screen windows"),
        &SettingsStore::hideLabelsOverFullScreen, &SettingsStore::setHideLabelsOverFullScreen,
        &SettingsStore::hideLabelsOverFullScreenChanged, this));

    layout->addSpacing(12);
    layout->addWidget(SettingControls::heading(
        localized("ディスプレイごとの上書き", "Per-display overrides"), this));
    layout->addWidget(SettingControls::note(
        localized(
            "チェックした項目だけがこのディスプレイ独自の値を使います。チェックを外しても値は残り、"
            "全体の設定が適用されます。",
            "Only checked items use a value of their own on this display. Unchecking keeps "
            "the value but applies the global setting."),
        this));
    displaysLayout_ = new QVBoxLayout();
    layout->addLayout(displaysLayout_);
    renderDisplays();
    for (const auto signal : {&QGuiApplication::screenAdded, &QGuiApplication::screenRemoved})
        connect(qGuiApp, signal, this, [this] { renderDisplays(); });
}

void CornerOverlayPane::renderDisplays() {
    const QList<DisplayEntry> displays = context_.displays();
    if (!shownDisplays_.isEmpty() && displays.size() == shownDisplays_.size() &&
        std::equal(displays.begin(), displays.end(), shownDisplays_.begin(),
                   [](const DisplayEntry& a, const DisplayEntry& b) {
                       return a.displayUUID == b.displayUUID && a.title == b.title;
                   }))
        return;
    shownDisplays_ = displays;
    while (QLayoutItem* item = displaysLayout_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (const DisplayEntry& display : displays)
        displaysLayout_->addWidget(displaySection(display));
}

QWidget* CornerOverlayPane::displaySection(const DisplayEntry& display) {
    SettingsStore& s = context_.settings;
    auto* box = new QGroupBox(display.title, this);
    auto* form = new QFormLayout(box);
    const CornerSettingsModel own(s, display.displayUUID);
    for (const CornerOverrideItem item : CornerSettingsModel::items()) {
        auto* check = new QCheckBox(CornerSettingsModel::label(item), box);
        auto* editor = new CornerItemEditor(s, own, item, box);
        const auto render = [&s, check, editor, item, uuid = display.displayUUID] {
            const QSignalBlocker blocker(check);
            check->setChecked(s.isOverrideOn(item, uuid));
            editor->setEnabled(check->isChecked());
        };
        render();
        connect(check, &QCheckBox::toggled, box,
                [&s, item, uuid = display.displayUUID](bool on) { s.setOverride(item, on, uuid); });
        CornerItemEditor::onCornerChange(s, check, render);
        form->addRow(check, editor);
    }
    auto* reset = new QPushButton(
        localized("このディスプレイの上書きをリセット", "Reset This Display's Overrides"), box);
    const auto renderReset = [&s, reset, uuid = display.displayUUID] {
        reset->setEnabled(s.hasDisplayOverrides(uuid));
    };
    renderReset();
    CornerItemEditor::onCornerChange(s, reset, renderReset);
    connect(reset, &QPushButton::clicked, box,
            [&s, uuid = display.displayUUID] { s.resetDisplaySettings(uuid); });
    form->addRow(reset, SettingControls::note(localized("Space の名前とプリセットは変わりません。",
                                                        "Space names and presets are left alone."),
                                              box));
    return box;
}

} // namespace deskmark
