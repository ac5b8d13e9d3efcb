#include "ui/settings/BookmarksPane.h"

#include "core/app/Language.h"
#include "ui/settings/BookmarkAppsSection.h"
#include "ui/settings/BookmarkListSection.h"
#include "ui/settings/SettingControls.h"

#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QVBoxLayout>

namespace deskmark {

BookmarksPane::BookmarksPane(const SettingsContext& context, QWidget* parent) : QWidget(parent) {
    SettingsStore& s = context.settings;
    QVBoxLayout* layout = SettingControls::page(this);
    layout->addWidget(new BookmarkListSection(context, this));
    layout->addSpacing(8);
    layout->addWidget(new BookmarkAppsSection(context, this));
    layout->addSpacing(8);
    layout->addWidget(SettingControls::heading(localized("ポップアップ", "Popup"), this));
    layout->addWidget(SettingControls::checkBox(
        s, localized("キーのヒントを表示", "Show key hints"), &SettingsStore::bookmarkHintVisible,
        &SettingsStore::setBookmarkHintVisible, &SettingsStore::bookmarkHintVisibleChanged, this));
    layout->addWidget(SettingControls::checkBox(
        s, localized("削除の前に確認する", "Confirm before deleting"),
        &SettingsStore::bookmarkConfirmDelete, &SettingsStore::setBookmarkConfirmDelete,
        &SettingsStore::bookmarkConfirmDeleteChanged, this));
    layout->addWidget(SettingControls::checkBox(
        s, localized("名前を表示", "Show names"), &SettingsStore::bookmarkShowLabel,
        &SettingsStore::setBookmarkShowLabel, &SettingsStore::bookmarkShowLabelChanged, this));
    layout->addWidget(SettingControls::checkBox(
        s, localized("アドレスとパスを表示", "Show addresses and paths"),
        &SettingsStore::bookmarkShowTarget, &SettingsStore::setBookmarkShowTarget,
        &SettingsStore::bookmarkShowTargetChanged, this));
    auto* form = new QFormLayout();
    QDoubleSpinBox* scale = SettingControls::number(
        s, &SettingsStore::bookmarkPopupScale, &SettingsStore::setBookmarkPopupScale,
        &SettingsStore::bookmarkPopupScaleChanged, 0.5, 2.0, this, 2, QStringLiteral(" ×"));
    form->addRow(localized("大きさ", "Scale"), scale);
    layout->addLayout(form);
}

} // namespace deskmark
