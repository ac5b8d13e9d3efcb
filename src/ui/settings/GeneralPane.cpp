#include "ui/settings/GeneralPane.h"

#include "core/app/Language.h"
#include "ui/settings/SettingControls.h"

#include <QCoreApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace deskmark {

GeneralPane::GeneralPane(const SettingsContext& context, QWidget* parent) : QWidget(parent) {
    SettingsStore& s = context.settings;
    QVBoxLayout* layout = SettingControls::page(this);
    auto* form = new QFormLayout();
    layout->addLayout(form);

    auto* language = SettingControls::choice(
        s, SettingControls::cases<AppLanguage>([](AppLanguage value) { return label(value); }),
        &SettingsStore::appLanguageRaw, &SettingsStore::setAppLanguageRaw,
        &SettingsStore::appLanguageRawChanged, this);
    form->addRow(localized("言語", "Language"), language);

    auto* restartRow = new QHBoxLayout();
    restartRow->addWidget(SettingControls::note(
        localized("言語の変更は再起動後に反映されます。", "Language changes apply after restart."),
        this));
    auto* restart = new QPushButton(localized("今すぐ再起動", "Restart Now"), this);
    connect(restart, &QPushButton::clicked, this, [relaunch = context.relaunch] {
        if (relaunch())
            QCoreApplication::quit();
    });
    restartRow->addWidget(restart);
    form->addRow(QString(), restartRow);

    auto* appearance = SettingControls::choice(
        s, SettingControls::cases<AppAppearance>([](AppAppearance value) { return label(value); }),
        &SettingsStore::appearanceRaw, &SettingsStore::setAppearanceRaw,
        &SettingsStore::appearanceRawChanged, this);
    form->addRow(localized("外観", "Appearance"), appearance);

    layout->addWidget(SettingControls::checkBox(
        s, localized("ログイン時に起動", "Start at login"), &SettingsStore::launchAtLogin,
        &SettingsStore::setLaunchAtLogin, &SettingsStore::launchAtLoginChanged, this));
    layout->addWidget(SettingControls::checkBox(
        s, localized("パネルに現在の Space の名前を表示", "Show the current Space in the panel"),
        &SettingsStore::showCurrentSpaceInMenuBar, &SettingsStore::setShowCurrentSpaceInMenuBar,
        &SettingsStore::showCurrentSpaceInMenuBarChanged, this));
    layout->addWidget(SettingControls::checkBox(
        s,
        localized("設定ウインドウを常に手前に表示", "Keep the settings window above other windows"),
        &SettingsStore::settingsWindowFloating, &SettingsStore::setSettingsWindowFloating,
        &SettingsStore::settingsWindowFloatingChanged, this));
}

} // namespace deskmark
