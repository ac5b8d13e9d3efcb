#pragma once

#include "core/model/Defaults.h"
#include "core/model/HotKey.h"
#include "core/model/HotKeyAction.h"
#include "core/model/JsonCodec.h"
#include "core/model/SettingsEnums.h"

#include <QObject>

#include <functional>
#include <optional>

namespace deskmark {

// Values kept per display, keyed by display UUID.
template <typename T> using ByDisplay = QMap<QString, T>;

// Every user preference of the application, kept in the settings (Defaults).
//
// Each setting is read once at construction, falling back to its default when its key
// is absent or holds a value of the wrong type, and every assignment that changes a
// value is written through at once. A property P has the getter P(), the setter setP()
// and the signal PChanged(). Enumerations are kept as their raw text (the ...Raw
// properties); typed accessors parse it with the enumeration's fallback.
//
// Each corner setting may also be overridden per display: the ...ByDisplay dictionaries
// hold the displays' own values, cornerOverridesByDisplay lists the items switched on
// for each display, and the getters taking a display UUID give the effective value.
class SettingsStore : public QObject {
    Q_OBJECT
public:
    // What differs between platforms.
    struct PlatformDefaults {
        QString terminalBundleID;
        // Asked for editorBundleID's default when the key is absent; may be empty.
        std::function<QString()> firstInstalledEditor;
        // Whether the login item is on now: the initial value of launchAtLogin.
        bool launchAtLogin = false;
    };

    // Alt+Super+B and Alt+Super+Tab: Alt+Tab alone is the window manager's.
    static constexpr HotKey defaultBookmarkHotKey{11,
                                                  HotKey::optionModifier | HotKey::commandModifier};
    static constexpr HotKey defaultSwitcherHotKey{48,
                                                  HotKey::optionModifier | HotKey::commandModifier};

    using Flags = ByDisplay<bool>;
    using Numbers = ByDisplay<double>;
    using Words = ByDisplay<QString>;
    using WordLists = ByDisplay<QStringList>;

    SettingsStore(Defaults& defaults, const PlatformDefaults& platform, QObject* parent = nullptr);

    // Called after any of the five hot keys has been written.
    std::function<void()> onHotKeysChanged;

    // Status item and corner overlay.
    bool showCurrentSpaceInMenuBar() const { return showCurrentSpaceInMenuBar_.value; }
    void setShowCurrentSpaceInMenuBar(bool on) { assign(showCurrentSpaceInMenuBar_, on); }
    bool cornerOverlayEnabled() const { return cornerOverlayEnabled_.value; }
    void setCornerOverlayEnabled(bool on) { assign(cornerOverlayEnabled_, on); }
    const QString& cornerPositionRaw() const { return cornerPositionRaw_.value; }
    void setCornerPositionRaw(const QString& raw) { assign(cornerPositionRaw_, raw); }
    double cornerFontSize() const { return cornerFontSize_.value; }
    void setCornerFontSize(double size) { assign(cornerFontSize_, size); }
    double cornerOffsetY() const { return cornerOffsetY_.value; }
    void setCornerOffsetY(double offset) { assign(cornerOffsetY_, offset); }
    double cornerOffsetX() const { return cornerOffsetX_.value; }
    void setCornerOffsetX(double offset) { assign(cornerOffsetX_, offset); }
    double cornerMargin() const { return cornerMargin_.value; }
    void setCornerMargin(double margin) { assign(cornerMargin_, margin); }
    const QString& cornerShapeRaw() const { return cornerShapeRaw_.value; }
    void setCornerShapeRaw(const QString& raw) { assign(cornerShapeRaw_, raw); }
    const QString& cornerWeightRaw() const { return cornerWeightRaw_.value; }
    void setCornerWeightRaw(const QString& raw) { assign(cornerWeightRaw_, raw); }
    const QString& cornerVPaddingRaw() const { return cornerVPaddingRaw_.value; }
    void setCornerVPaddingRaw(const QString& raw) { assign(cornerVPaddingRaw_, raw); }
    const QString& cornerColorModeRaw() const { return cornerColorModeRaw_.value; }
    void setCornerColorModeRaw(const QString& raw) { assign(cornerColorModeRaw_, raw); }
    double cornerBgOpacity() const { return cornerBgOpacity_.value; }
    void setCornerBgOpacity(double opacity) { assign(cornerBgOpacity_, opacity); }

    CornerPosition cornerPosition() const {
        return enumOrFallback<CornerPosition>(cornerPositionRaw());
    }
    CornerShape cornerShape() const { return enumOrFallback<CornerShape>(cornerShapeRaw()); }
    CornerWeight cornerWeight() const { return enumOrFallback<CornerWeight>(cornerWeightRaw()); }
    CornerVPadding cornerVPadding() const {
        return enumOrFallback<CornerVPadding>(cornerVPaddingRaw());
    }
    CornerColorMode cornerColorMode() const {
        return enumOrFallback<CornerColorMode>(cornerColorModeRaw());
    }

    // The per-display corner dictionaries, whole.
    const Flags& cornerOverlayEnabledByDisplay() const {
        return cornerOverlayEnabledByDisplay_.value;
    }
    void setCornerOverlayEnabledByDisplay(const Flags& v) {
        assign(cornerOverlayEnabledByDisplay_, v);
    }
    const Words& cornerPositionByDisplay() const { return cornerPositionByDisplay_.value; }
    void setCornerPositionByDisplay(const Words& v) { assign(cornerPositionByDisplay_, v); }
    const Numbers& cornerFontSizeByDisplay() const { return cornerFontSizeByDisplay_.value; }
    void setCornerFontSizeByDisplay(const Numbers& v) { assign(cornerFontSizeByDisplay_, v); }
    const Numbers& cornerOffsetYByDisplay() const { return cornerOffsetYByDisplay_.value; }
    void setCornerOffsetYByDisplay(const Numbers& v) { assign(cornerOffsetYByDisplay_, v); }
    const Numbers& cornerOffsetXByDisplay() const { return cornerOffsetXByDisplay_.value; }
    void setCornerOffsetXByDisplay(const Numbers& v) { assign(cornerOffsetXByDisplay_, v); }
    const Numbers& cornerMarginByDisplay() const { return cornerMarginByDisplay_.value; }
    void setCornerMarginByDisplay(const Numbers& v) { assign(cornerMarginByDisplay_, v); }
    const Numbers& cornerBgOpacityByDisplay() const { return cornerBgOpacityByDisplay_.value; }
    void setCornerBgOpacityByDisplay(const Numbers& v) { assign(cornerBgOpacityByDisplay_, v); }
    const Words& cornerWeightByDisplay() const { return cornerWeightByDisplay_.value; }
    void setCornerWeightByDisplay(const Words& v) { assign(cornerWeightByDisplay_, v); }
    const Words& cornerVPaddingByDisplay() const { return cornerVPaddingByDisplay_.value; }
    void setCornerVPaddingByDisplay(const Words& v) { assign(cornerVPaddingByDisplay_, v); }
    const Words& cornerShapeByDisplay() const { return cornerShapeByDisplay_.value; }
    void setCornerShapeByDisplay(const Words& v) { assign(cornerShapeByDisplay_, v); }
    const Words& cornerColorModeByDisplay() const { return cornerColorModeByDisplay_.value; }
    void setCornerColorModeByDisplay(const Words& v) { assign(cornerColorModeByDisplay_, v); }
    // Whether a monitor whose active window is full screen hides its corner label.
    bool hideLabelsOverFullScreen() const { return hideLabelsOverFullScreen_.value; }
    void setHideLabelsOverFullScreen(bool on) { assign(hideLabelsOverFullScreen_, on); }
    const WordLists& cornerOverridesByDisplay() const { return cornerOverridesByDisplay_.value; }
    void setCornerOverridesByDisplay(const WordLists& v) { assign(cornerOverridesByDisplay_, v); }

    // Per-display overrides: the effective value of an item for a display is the
    // display's own value while its override is on and that value is usable (a known
    // raw text for enumerations), else the global value.
    bool isOverrideOn(CornerOverrideItem item, const QString& display) const;
    // Switching on seeds a display without a value of its own with the global value;
    // switching off keeps the display's value for a later switch on.
    void setOverride(CornerOverrideItem item, bool on, const QString& display);
    void resetDisplaySettings(const QString& display);
    bool hasDisplayOverrides(const QString& display) const;

    bool cornerOverlayEnabled(const QString& display) const;
    CornerPosition cornerPosition(const QString& display) const;
    double cornerFontSize(const QString& display) const;
    double cornerOffsetY(const QString& display) const;
    double cornerOffsetX(const QString& display) const;
    double cornerMargin(const QString& display) const;
    CornerWeight cornerWeight(const QString& display) const;
    CornerVPadding cornerVPadding(const QString& display) const;
    CornerShape cornerShape(const QString& display) const;
    CornerColorMode cornerColorMode(const QString& display) const;
    double cornerBgOpacity(const QString& display) const;

    // These store the display's own value; they leave its override switch alone.
    void setCornerOverlayEnabled(bool on, const QString& display);
    void setCornerPosition(CornerPosition position, const QString& display);
    void setCornerFontSize(double size, const QString& display);
    void setCornerOffsetY(double offset, const QString& display);
    void setCornerOffsetX(double offset, const QString& display);
    void setCornerMargin(double margin, const QString& display);
    void setCornerWeight(CornerWeight weight, const QString& display);
    void setCornerVPadding(CornerVPadding padding, const QString& display);
    void setCornerShape(CornerShape shape, const QString& display);
    void setCornerColorMode(CornerColorMode mode, const QString& display);
    void setCornerBgOpacity(double opacity, const QString& display);

    // Overview labels.
    bool mcLabelEnabled() const { return mcLabelEnabled_.value; }
    void setMcLabelEnabled(bool on) { assign(mcLabelEnabled_, on); }
    const QString& mcLabelVPositionRaw() const { return mcLabelVPositionRaw_.value; }
    void setMcLabelVPositionRaw(const QString& raw) { assign(mcLabelVPositionRaw_, raw); }
    const QString& mcLabelWeightRaw() const { return mcLabelWeightRaw_.value; }
    void setMcLabelWeightRaw(const QString& raw) { assign(mcLabelWeightRaw_, raw); }
    double mcLabelVPadding() const { return mcLabelVPadding_.value; }
    void setMcLabelVPadding(double padding) { assign(mcLabelVPadding_, padding); }
    double mcLabelHPadding() const { return mcLabelHPadding_.value; }
    void setMcLabelHPadding(double padding) { assign(mcLabelHPadding_, padding); }
    double mcLabelFontSize() const { return mcLabelFontSize_.value; }
    void setMcLabelFontSize(double size) { assign(mcLabelFontSize_, size); }
    bool mcLabelSingleLine() const { return mcLabelSingleLine_.value; }
    void setMcLabelSingleLine(bool on) { assign(mcLabelSingleLine_, on); }

    // Desktop names in the window manager's own pager, and the names found there before.
    bool projectNamesInPager() const { return projectNamesInPager_.value; }
    void setProjectNamesInPager(bool on) { assign(projectNamesInPager_, on); }
    const QStringList& pagerFoundNames() const { return pagerFoundNames_.value; }
    void setPagerFoundNames(const QStringList& names) { assign(pagerFoundNames_, names); }

    // Whether the user has been told once how to name a desktop (first start, no projects).
    bool firstRunNoticeShown() const { return firstRunNoticeShown_.value; }
    void setFirstRunNoticeShown(bool shown) { assign(firstRunNoticeShown_, shown); }

    MCLabelVPosition mcLabelVPosition() const {
        return enumOrFallback<MCLabelVPosition>(mcLabelVPositionRaw());
    }
    // The overview labels are medium unless set otherwise, unknown words included.
    CornerWeight mcLabelWeight() const {
        return enumFromRaw<CornerWeight>(mcLabelWeightRaw()).value_or(CornerWeight::Medium);
    }

    // Application.
    bool settingsWindowFloating() const { return settingsWindowFloating_.value; }
    void setSettingsWindowFloating(bool on) { assign(settingsWindowFloating_, on); }
    // Takes effect at the next start.
    const QString& appLanguageRaw() const { return appLanguageRaw_.value; }
    void setAppLanguageRaw(const QString& raw) { assign(appLanguageRaw_, raw); }
    const QString& appearanceRaw() const { return appearanceRaw_.value; }
    void setAppearanceRaw(const QString& raw) { assign(appearanceRaw_, raw); }
    bool autoUpdateEnabled() const { return autoUpdateEnabled_.value; }
    void setAutoUpdateEnabled(bool on) { assign(autoUpdateEnabled_, on); }
    // Not kept in the settings: the login item itself is the truth.
    bool launchAtLogin() const { return launchAtLogin_; }
    void setLaunchAtLogin(bool on);

    AppLanguage appLanguage() const { return enumOrFallback<AppLanguage>(appLanguageRaw()); }
    AppAppearance appearance() const { return enumOrFallback<AppAppearance>(appearanceRaw()); }

    // Hot keys; none means no hot key.
    std::optional<HotKey> nameHotKey() const { return nameHotKey_.value; }
    void setNameHotKey(const std::optional<HotKey>& key) { assignHotKey(nameHotKey_, key); }
    std::optional<HotKey> presetHotKey() const { return presetHotKey_.value; }
    void setPresetHotKey(const std::optional<HotKey>& key) { assignHotKey(presetHotKey_, key); }
    std::optional<HotKey> settingsHotKey() const { return settingsHotKey_.value; }
    void setSettingsHotKey(const std::optional<HotKey>& key) { assignHotKey(settingsHotKey_, key); }
    std::optional<HotKey> bookmarkHotKey() const { return bookmarkHotKey_.value; }
    void setBookmarkHotKey(const std::optional<HotKey>& key) { assignHotKey(bookmarkHotKey_, key); }
    std::optional<HotKey> switcherHotKey() const { return switcherHotKey_.value; }
    void setSwitcherHotKey(const std::optional<HotKey>& key) { assignHotKey(switcherHotKey_, key); }
    // The same five by their action.
    std::optional<HotKey> hotKey(HotKeyAction action) const;
    void setHotKey(HotKeyAction action, const std::optional<HotKey>& key);

    // Bookmarks.
    const QString& terminalBundleID() const { return terminalBundleID_.value; }
    void setTerminalBundleID(const QString& id) { assign(terminalBundleID_, id); }
    const QString& editorBundleID() const { return editorBundleID_.value; }
    void setEditorBundleID(const QString& id) { assign(editorBundleID_, id); }
    double bookmarkPopupScale() const { return bookmarkPopupScale_.value; }
    void setBookmarkPopupScale(double scale) { assign(bookmarkPopupScale_, scale); }
    const Numbers& bookmarkPopupScaleByDisplay() const {
        return bookmarkPopupScaleByDisplay_.value;
    }
    void setBookmarkPopupScaleByDisplay(const Numbers& v) {
        assign(bookmarkPopupScaleByDisplay_, v);
    }
    const QStringList& folderAppOrder() const { return folderAppOrder_.value; }
    void setFolderAppOrder(const QStringList& ids) { assign(folderAppOrder_, ids); }
    const QStringList& folderAppHidden() const { return folderAppHidden_.value; }
    void setFolderAppHidden(const QStringList& ids) { assign(folderAppHidden_, ids); }
    bool bookmarkHintVisible() const { return bookmarkHintVisible_.value; }
    void setBookmarkHintVisible(bool on) { assign(bookmarkHintVisible_, on); }
    bool bookmarkConfirmDelete() const { return bookmarkConfirmDelete_.value; }
    void setBookmarkConfirmDelete(bool on) { assign(bookmarkConfirmDelete_, on); }
    bool bookmarkShowLabel() const { return bookmarkShowLabel_.value; }
    void setBookmarkShowLabel(bool on) { assign(bookmarkShowLabel_, on); }
    bool bookmarkShowTarget() const { return bookmarkShowTarget_.value; }
    void setBookmarkShowTarget(bool on) { assign(bookmarkShowTarget_, on); }

    // The display's own popup scale when a display is given and has one, else the
    // global scale; the setter writes the display's entry, or the global scale.
    double bookmarkPopupScale(const std::optional<QString>& display) const;
    void setBookmarkPopupScale(double scale, const std::optional<QString>& display);

Q_SIGNALS:
    void showCurrentSpaceInMenuBarChanged();
    void cornerOverlayEnabledChanged();
    void cornerOverlayEnabledByDisplayChanged();
    void cornerPositionRawChanged();
    void cornerPositionByDisplayChanged();
    void cornerFontSizeChanged();
    void cornerOffsetYChanged();
    void cornerOffsetXChanged();
    void cornerMarginChanged();
    void cornerFontSizeByDisplayChanged();
    void cornerShapeRawChanged();
    void cornerWeightRawChanged();
    void cornerVPaddingRawChanged();
    void cornerColorModeRawChanged();
    void cornerBgOpacityChanged();
    void cornerOffsetYByDisplayChanged();
    void cornerOffsetXByDisplayChanged();
    void cornerMarginByDisplayChanged();
    void cornerBgOpacityByDisplayChanged();
    void cornerWeightByDisplayChanged();
    void cornerVPaddingByDisplayChanged();
    void cornerShapeByDisplayChanged();
    void cornerColorModeByDisplayChanged();
    void hideLabelsOverFullScreenChanged();
    void cornerOverridesByDisplayChanged();
    void mcLabelEnabledChanged();
    void mcLabelVPositionRawChanged();
    void mcLabelWeightRawChanged();
    void mcLabelVPaddingChanged();
    void mcLabelHPaddingChanged();
    void mcLabelFontSizeChanged();
    void mcLabelSingleLineChanged();
    void projectNamesInPagerChanged();
    void firstRunNoticeShownChanged();
    void pagerFoundNamesChanged();
    void settingsWindowFloatingChanged();
    void appLanguageRawChanged();
    void appearanceRawChanged();
    void autoUpdateEnabledChanged();
    void launchAtLoginChanged();
    void nameHotKeyChanged();
    void presetHotKeyChanged();
    void settingsHotKeyChanged();
    void bookmarkHotKeyChanged();
    void switcherHotKeyChanged();
    void terminalBundleIDChanged();
    void editorBundleIDChanged();
    void bookmarkPopupScaleChanged();
    void bookmarkPopupScaleByDisplayChanged();
    void folderAppOrderChanged();
    void folderAppHiddenChanged();
    void bookmarkHintVisibleChanged();
    void bookmarkConfirmDeleteChanged();
    void bookmarkShowLabelChanged();
    void bookmarkShowTargetChanged();

private:
    using Self = SettingsStore;

    // One setting: its key, its value (the default until loaded) and its signal.
    template <typename T> struct Setting {
        const char* key;
        T value;
        void (Self::*changed)();
    };
    // A hot key with a built-in default stores a cleared key as "", so that it differs
    // from one never set; one without removes its key.
    struct HotKeySetting {
        const char* key;
        std::optional<HotKey> builtIn;
        void (Self::*changed)();
        std::optional<HotKey> value = std::nullopt;
    };

    template <typename T> void write(const Setting<T>& setting) {
        defaults_.setValue(QLatin1String(setting.key), JsonCodec<T>::encode(setting.value));
    }
    template <typename T> void assign(Setting<T>& setting, const T& value) {
        if (setting.value == value)
            return;
        setting.value = value;
        write(setting);
        Q_EMIT(this->*setting.changed)();
    }
    template <typename T>
    void setDisplayEntry(Setting<ByDisplay<T>>& setting, const QString& display, const T& value) {
        ByDisplay<T> entries = setting.value;
        entries.insert(display, value);
        assign(setting, entries);
    }
    void assignHotKey(HotKeySetting& setting, const std::optional<HotKey>& key);
    // The setting of action, const or not as store is.
    template <typename Store> static auto& hotKeySetting(Store& store, HotKeyAction action);

    // Takes the stored value when it has the setting's type; false leaves the default.
    template <typename T> bool load(Setting<T>& setting) {
        std::optional<T> stored = JsonCodec<T>::decode(defaults_.value(QLatin1String(setting.key)));
        if (!stored)
            return false;
        setting.value = std::move(*stored);
        return true;
    }
    template <typename... T> void loadAll(Setting<T>&... settings) { (load(settings), ...); }
    void load(HotKeySetting& setting);
    void loadCornerFontSizeByDisplay();
    void loadOverrides();

    // Visits every overridable item in order with its per-display and global settings.
    template <typename S, typename F> static void forEachOverride(S& self, F&& visit);
    // Visits item's pair of settings; T is the type of their values.
    template <typename T, typename S, typename F>
    static void withOverride(S& self, CornerOverrideItem item, F&& visit);
    template <typename T, typename Usable>
    T effective(CornerOverrideItem item, const QString& display, Usable usable) const;
    template <typename E> E effectiveEnum(CornerOverrideItem item, const QString& display) const;
    template <typename T>
    void setOwnValue(CornerOverrideItem item, const QString& display, const T& value);

    Defaults& defaults_;
    bool launchAtLogin_;

    // The settings table, in the order in which it is read at start (keys and defaults:
    // SettingsStore.cpp).
    Setting<bool> showCurrentSpaceInMenuBar_;
    Setting<bool> cornerOverlayEnabled_;
    Setting<Flags> cornerOverlayEnabledByDisplay_;
    Setting<QString> cornerPositionRaw_;
    Setting<Words> cornerPositionByDisplay_;
    Setting<double> cornerFontSize_;
    Setting<double> cornerOffsetY_;
    Setting<double> cornerOffsetX_;
    Setting<double> cornerMargin_;
    Setting<Numbers> cornerFontSizeByDisplay_;
    Setting<QString> cornerShapeRaw_;
    Setting<QString> cornerWeightRaw_;
    Setting<QString> cornerVPaddingRaw_;
    Setting<QString> cornerColorModeRaw_;
    Setting<double> cornerBgOpacity_;
    Setting<Numbers> cornerOffsetYByDisplay_;
    Setting<Numbers> cornerOffsetXByDisplay_;
    Setting<Numbers> cornerMarginByDisplay_;
    Setting<Numbers> cornerBgOpacityByDisplay_;
    Setting<Words> cornerWeightByDisplay_;
    Setting<Words> cornerVPaddingByDisplay_;
    Setting<Words> cornerShapeByDisplay_;
    Setting<Words> cornerColorModeByDisplay_;
    Setting<bool> hideLabelsOverFullScreen_;
    Setting<WordLists> cornerOverridesByDisplay_;
    Setting<bool> mcLabelEnabled_;
    Setting<QString> mcLabelVPositionRaw_;
    Setting<QString> mcLabelWeightRaw_;
    Setting<double> mcLabelVPadding_;
    Setting<double> mcLabelHPadding_;
    Setting<double> mcLabelFontSize_;
    Setting<bool> mcLabelSingleLine_;
    Setting<bool> projectNamesInPager_;
    Setting<QStringList> pagerFoundNames_;
    Setting<bool> firstRunNoticeShown_;
    Setting<bool> settingsWindowFloating_;
    Setting<QString> appLanguageRaw_;
    Setting<QString> appearanceRaw_;
    Setting<bool> autoUpdateEnabled_;
    HotKeySetting nameHotKey_;
    HotKeySetting presetHotKey_;
    HotKeySetting settingsHotKey_;
    HotKeySetting bookmarkHotKey_;
    HotKeySetting switcherHotKey_;
    Setting<QString> terminalBundleID_;
    Setting<QString> editorBundleID_;
    Setting<double> bookmarkPopupScale_;
    Setting<Numbers> bookmarkPopupScaleByDisplay_;
    Setting<QStringList> folderAppOrder_;
    Setting<QStringList> folderAppHidden_;
    Setting<bool> bookmarkHintVisible_;
    Setting<bool> bookmarkConfirmDelete_;
    Setting<bool> bookmarkShowLabel_;
    Setting<bool> bookmarkShowTarget_;
};

} // namespace deskmark
