#include "ui/settings/MissionControlPane.h"

#include "core/app/Language.h"
#include "core/app/PagerNameSync.h"
#include "ui/settings/SettingControls.h"

#include <QFormLayout>
#include <QVBoxLayout>

namespace deskmark {

MissionControlPane::MissionControlPane(const SettingsContext& context, QWidget* parent)
    : QWidget(parent) {
    SettingsStore& s = context.settings;
    QVBoxLayout* layout = SettingControls::page(this);
    layout->addWidget(SettingControls::note(
        localized(
            "Linux のデスクトップは、ほかのプログラムが自分の一覧画面（Space の一覧）の上に"
            "描くことを許していません。そのため、一覧画面のラベルは Linux では表示されません。"
            "代わりに、ページャーと一覧画面にプロジェクト名を出せます。",
            "No Linux desktop lets other programs draw over its own overview of the Spaces, "
            "so the overview labels below do not appear on Linux. The desktop's pager and "
            "overview can show the project names instead."),
        this));
    auto* pager = new QCheckBox(localized("デスクトップのページャーにプロジェクト名を表示",
                                          "Show project names in the desktop's pager"),
                                this);
    const auto renderPager = [&s, pager] {
        const QSignalBlocker blocker(pager);
        pager->setChecked(s.projectNamesInPager());
    };
    renderPager();
    connect(pager, &QCheckBox::toggled, this,
            [&sync = context.pagerNames](bool on) { sync.setEnabled(on); });
    connect(&s, &SettingsStore::projectNamesInPagerChanged, pager, renderPager);
    layout->addWidget(pager);
    layout->addWidget(SettingControls::note(
        localized(
            "オンにすると、プロジェクトのある Space の名前をプロジェクト名にします。ウインドウ"
            "マネージャのページャー、デスクトップメニュー、一覧画面に表示されます。プロジェクトの"
            "ない Space は元の名前のままです。オフにすると元の名前に戻します。",
            "When on, each Space with a project is named after it, so the window manager's "
            "own pager, desktop menu and overview show it. Spaces without a project keep "
            "their names. Turning it off restores the names Deskmark found."),
        this));
    layout->addSpacing(12);
    layout->addWidget(SettingControls::checkBox(
        s, localized("一覧画面の Space にラベルを表示", "Show labels on the overview's Spaces"),
        &SettingsStore::mcLabelEnabled, &SettingsStore::setMcLabelEnabled,
        &SettingsStore::mcLabelEnabledChanged, this));
    auto* form = new QFormLayout();
    layout->addLayout(form);
    const QList<QString> positions{localized("上", "Top"), localized("中央", "Center"),
                                   localized("下", "Bottom")};
    form->addRow(localized("縦の位置", "Vertical position"),
                 SettingControls::choice(
                     s, SettingControls::cases<MCLabelVPosition>([&](MCLabelVPosition p) {
                         return positions[int(p)];
                     }),
                     &SettingsStore::mcLabelVPositionRaw, &SettingsStore::setMcLabelVPositionRaw,
                     &SettingsStore::mcLabelVPositionRawChanged, this));
    form->addRow(localized("太さ", "Weight"),
                 SettingControls::choice(
                     s,
                     SettingControls::cases<CornerWeight>([](CornerWeight w) { return label(w); }),
                     &SettingsStore::mcLabelWeightRaw, &SettingsStore::setMcLabelWeightRaw,
                     &SettingsStore::mcLabelWeightRawChanged, this));
    form->addRow(localized("文字サイズ", "Font size"),
                 SettingControls::number(s, &SettingsStore::mcLabelFontSize,
                                         &SettingsStore::setMcLabelFontSize,
                                         &SettingsStore::mcLabelFontSizeChanged, 8, 40, this));
    form->addRow(localized("上下の余白", "Vertical padding"),
                 SettingControls::number(s, &SettingsStore::mcLabelVPadding,
                                         &SettingsStore::setMcLabelVPadding,
                                         &SettingsStore::mcLabelVPaddingChanged, 0, 20, this));
    form->addRow(localized("左右の余白", "Horizontal padding"),
                 SettingControls::number(s, &SettingsStore::mcLabelHPadding,
                                         &SettingsStore::setMcLabelHPadding,
                                         &SettingsStore::mcLabelHPaddingChanged, 0, 20, this));
    layout->addWidget(SettingControls::checkBox(
        s, localized("1 行で表示", "Single line"), &SettingsStore::mcLabelSingleLine,
        &SettingsStore::setMcLabelSingleLine, &SettingsStore::mcLabelSingleLineChanged, this));
    layout->addWidget(
        SettingControls::note(localized("変更は一覧画面を次に開いたときに反映されます。",
                                        "Changes apply the next time the overview opens."),
                              this));
}

} // namespace deskmark
