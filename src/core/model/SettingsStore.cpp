#include "core/model/SettingsStore.h"

namespace deskmark {

// The settings table: every setting's key and default, then the reading at start.
SettingsStore::SettingsStore(Defaults& defaults, const PlatformDefaults& platform, QObject* parent)
    : QObject(parent), defaults_(defaults), launchAtLogin_(platform.launchAtLogin),
      showCurrentSpaceInMenuBar_{"showCurrentSpaceInMenuBar", true,
                                 &Self::showCurrentSpaceInMenuBarChanged},
      cornerOverlayEnabled_{"cornerOverlayEnabled", true, &Self::cornerOverlayEnabledChanged},
      cornerOverlayEnabledByDisplay_{
          "cornerOverlayEnabledByDisplay", {}, &Self::cornerOverlayEnabledByDisplayChanged},
      cornerPositionRaw_{"cornerPositionRaw", QStringLiteral("bottom"),
                         &Self::cornerPositionRawChanged},
      cornerPositionByDisplay_{
          "cornerPositionByDisplay", {}, &Self::cornerPositionByDisplayChanged},
      cornerFontSize_{"cornerFontSize", 13.0, &Self::cornerFontSizeChanged},
      cornerOffsetY_{"cornerOffsetY", 0.0, &Self::cornerOffsetYChanged},
      cornerOffsetX_{"cornerOffsetX", 0.0, &Self::cornerOffsetXChanged},
      cornerMargin_{"cornerMargin", 12.0, &Self::cornerMarginChanged},
      cornerFontSizeByDisplay_{
          "cornerFontSizeByDisplay", {}, &Self::cornerFontSizeByDisplayChanged},
      cornerShapeRaw_{"cornerShapeRaw", QStringLiteral("capsule"), &Self::cornerShapeRawChanged},
      cornerWeightRaw_{"cornerWeightRaw", QStringLiteral("regular"), &Self::cornerWeightRawChanged},
      cornerVPaddingRaw_{"cornerVPaddingRaw", QStringLiteral("narrow"),
                         &Self::cornerVPaddingRawChanged},
      cornerColorModeRaw_{"cornerColorModeRaw", QStringLiteral("spaceColors"),
                          &Self::cornerColorModeRawChanged},
      cornerBgOpacity_{"cornerBgOpacity", 0.8, &Self::cornerBgOpacityChanged},
      cornerOffsetYByDisplay_{"cornerOffsetYByDisplay", {}, &Self::cornerOffsetYByDisplayChanged},
      cornerOffsetXByDisplay_{"cornerOffsetXByDisplay", {}, &Self::cornerOffsetXByDisplayChanged},
      cornerMarginByDisplay_{"cornerMarginByDisplay", {}, &Self::cornerMarginByDisplayChanged},
      cornerBgOpacityByDisplay_{
          "cornerBgOpacityByDisplay", {}, &Self::cornerBgOpacityByDisplayChanged},
      cornerWeightByDisplay_{"cornerWeightByDisplay", {}, &Self::cornerWeightByDisplayChanged},
      cornerVPaddingByDisplay_{
          "cornerVPaddingByDisplay", {}, &Self::cornerVPaddingByDisplayChanged},
      cornerShapeByDisplay_{"cornerShapeByDisplay", {}, &Self::cornerShapeByDisplayChanged},
      cornerColorModeByDisplay_{
          "cornerColorModeByDisplay", {}, &Self::cornerColorModeByDisplayChanged},
      hideLabelsOverFullScreen_{"hideLabelsOverFullScreen", false,
                                &Self::hideLabelsOverFullScreenChanged},
      cornerOverridesByDisplay_{
          "cornerOverridesByDisplay", {}, &Self::cornerOverridesByDisplayChanged},
      mcLabelEnabled_{"mcLabelEnabled", true, &Self::mcLabelEnabledChanged},
      mcLabelVPositionRaw_{"mcLabelVPositionRaw", QStringLiteral("bottom"),
                           &Self::mcLabelVPositionRawChanged},
      mcLabelWeightRaw_{"mcLabelWeightRaw", QStringLiteral("medium"),
                        &Self::mcLabelWeightRawChanged},
      mcLabelVPadding_{"mcLabelVPadding", 4.0, &Self::mcLabelVPaddingChanged},
      mcLabelHPadding_{"mcLabelHPadding", 3.0, &Self::mcLabelHPaddingChanged},
      mcLabelFontSize_{"mcLabelFontSize", 14.0, &Self::mcLabelFontSizeChanged},
      mcLabelSingleLine_{"mcLabelSingleLine", false, &Self::mcLabelSingleLineChanged},
      projectNamesInPager_{"projectNamesInPager", false, &Self::projectNamesInPagerChanged},
      pagerFoundNames_{"pagerFoundNames", {}, &Self::pagerFoundNamesChanged},
      firstRunNoticeShown_{"firstRunNoticeShown", false, &Self::firstRunNoticeShownChanged},
      settingsWindowFloating_{"settingsWindowFloating", true, &Self::settingsWindowFloatingChanged},
      appLanguageRaw_{"appLanguage", QStringLiteral("auto"), &Self::appLanguageRawChanged},
      appearanceRaw_{"appAppearance", QStringLiteral("auto"), &Self::appearanceRawChanged},
      autoUpdateEnabled_{"autoUpdateEnabled", true, &Self::autoUpdateEnabledChanged},
      nameHotKey_{"nameHotKey", std::nullopt, &Self::nameHotKeyChanged},
      presetHotKey_{"presetHotKey", std::nullopt, &Self::presetHotKeyChanged},
      settingsHotKey_{"settingsHotKey", std::nullopt, &Self::settingsHotKeyChanged},
      bookmarkHotKey_{"bookmarkHotKey", defaultBookmarkHotKey, &Self::bookmarkHotKeyChanged},
      switcherHotKey_{"switcherHotKey", defaultSwitcherHotKey, &Self::switcherHotKeyChanged},
      terminalBundleID_{"terminalBundleID", platform.terminalBundleID,
                        &Self::terminalBundleIDChanged},
      editorBundleID_{"editorBundleID", {}, &Self::editorBundleIDChanged},
      bookmarkPopupScale_{"bookmarkPopupScale", 1.0, &Self::bookmarkPopupScaleChanged},
      bookmarkPopupScaleByDisplay_{
          "bookmarkPopupScaleByDisplay", {}, &Self::bookmarkPopupScaleByDisplayChanged},
      folderAppOrder_{"folderAppOrder", {}, &Self::folderAppOrderChanged},
      folderAppHidden_{"folderAppHidden", {}, &Self::folderAppHiddenChanged},
      bookmarkHintVisible_{"bookmarkHintVisible", true, &Self::bookmarkHintVisibleChanged},
      bookmarkConfirmDelete_{"bookmarkConfirmDelete", true, &Self::bookmarkConfirmDeleteChanged},
      bookmarkShowLabel_{"bookmarkShowLabel", true, &Self::bookmarkShowLabelChanged},
      bookmarkShowTarget_{"bookmarkShowTarget", true, &Self::bookmarkShowTargetChanged} {
    loadAll(showCurrentSpaceInMenuBar_, cornerOverlayEnabled_, cornerOverlayEnabledByDisplay_,
            cornerPositionRaw_, cornerPositionByDisplay_, cornerFontSize_, cornerOffsetY_,
            cornerOffsetX_, cornerMargin_);
    loadCornerFontSizeByDisplay();
    loadAll(cornerShapeRaw_, cornerWeightRaw_, cornerVPaddingRaw_, cornerColorModeRaw_,
            cornerBgOpacity_, cornerOffsetYByDisplay_, cornerOffsetXByDisplay_,
            cornerMarginByDisplay_, cornerBgOpacityByDisplay_, cornerWeightByDisplay_,
            cornerVPaddingByDisplay_, cornerShapeByDisplay_, cornerColorModeByDisplay_,
            hideLabelsOverFullScreen_, mcLabelEnabled_, mcLabelVPositionRaw_, mcLabelWeightRaw_,
            mcLabelVPadding_, mcLabelHPadding_, mcLabelFontSize_, mcLabelSingleLine_,
            projectNamesInPager_, pagerFoundNames_, firstRunNoticeShown_, settingsWindowFloating_,
            appLanguageRaw_, appearanceRaw_, autoUpdateEnabled_);
    for (HotKeySetting* hotKey :
         {&nameHotKey_, &presetHotKey_, &settingsHotKey_, &bookmarkHotKey_, &switcherHotKey_})
        load(*hotKey);
    load(terminalBundleID_);
    if (!load(editorBundleID_) && platform.firstInstalledEditor)
        editorBundleID_.value = platform.firstInstalledEditor();
    loadAll(bookmarkPopupScale_, bookmarkPopupScaleByDisplay_, folderAppOrder_, folderAppHidden_,
            bookmarkHintVisible_, bookmarkConfirmDelete_, bookmarkShowLabel_, bookmarkShowTarget_);
    // Last, because an absent overrides dictionary is rebuilt from the others.
    loadOverrides();
}

// An absent key gives the built-in hot key; anything stored that is not a record,
// the "" of a cleared key included, gives none.
void SettingsStore::load(HotKeySetting& setting) {
    const QJsonValue stored = defaults_.value(QLatin1String(setting.key));
    setting.value =
        stored.isUndefined() ? setting.builtIn : HotKey::fromJson(stored.toString().toUtf8());
}

// Font sizes per display were once kept under "cornerSizeByDisplay"; its numeric
// entries are used until the current key has been written.
void SettingsStore::loadCornerFontSizeByDisplay() {
    if (load(cornerFontSizeByDisplay_))
        return;
    const QJsonObject older = defaults_.value(QLatin1String("cornerSizeByDisplay")).toObject();
    for (auto it = older.begin(); it != older.end(); ++it) {
        if (const auto size = JsonCodec<double>::decode(it.value()))
            cornerFontSizeByDisplay_.value.insert(it.key(), *size);
    }
}

void SettingsStore::setLaunchAtLogin(bool on) {
    if (launchAtLogin_ == on)
        return;
    launchAtLogin_ = on;
    Q_EMIT launchAtLoginChanged();
}

void SettingsStore::assignHotKey(HotKeySetting& setting, const std::optional<HotKey>& key) {
    if (setting.value == key)
        return;
    setting.value = key;
    const QString name = QLatin1String(setting.key);
    if (key)
        defaults_.setValue(name, QString::fromUtf8(key->toJson()));
    else if (setting.builtIn)
        defaults_.setValue(name, QString());
    else
        defaults_.remove(name);
    Q_EMIT(this->*setting.changed)();
    if (onHotKeysChanged)
        onHotKeysChanged();
}

template <typename Store> auto& SettingsStore::hotKeySetting(Store& store, HotKeyAction action) {
    switch (action) {
    case HotKeyAction::Name:
        return store.nameHotKey_;
    case HotKeyAction::Preset:
        return store.presetHotKey_;
    case HotKeyAction::Settings:
        return store.settingsHotKey_;
    case HotKeyAction::Bookmark:
        return store.bookmarkHotKey_;
    case HotKeyAction::Switcher:
        break;
    }
    return store.switcherHotKey_;
}

std::optional<HotKey> SettingsStore::hotKey(HotKeyAction action) const {
    return hotKeySetting(*this, action).value;
}

void SettingsStore::setHotKey(HotKeyAction action, const std::optional<HotKey>& key) {
    assignHotKey(hotKeySetting(*this, action), key);
}

double SettingsStore::bookmarkPopupScale(const std::optional<QString>& display) const {
    if (display) {
        const auto own = bookmarkPopupScaleByDisplay_.value.constFind(*display);
        if (own != bookmarkPopupScaleByDisplay_.value.constEnd())
            return *own;
    }
    return bookmarkPopupScale_.value;
}

void SettingsStore::setBookmarkPopupScale(double scale, const std::optional<QString>& display) {
    if (display)
        setDisplayEntry(bookmarkPopupScaleByDisplay_, *display, scale);
    else
        setBookmarkPopupScale(scale);
}

} // namespace deskmark
