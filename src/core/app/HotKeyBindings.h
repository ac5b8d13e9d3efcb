#pragma once

#include "core/app/HotKeyManager.h"
#include "core/model/HotKeyAction.h"
#include "core/model/SettingsStore.h"

#include <array>
#include <functional>
#include <optional>

namespace deskmark {

// Binds the five hot-key settings to their actions and status-menu items: one handler
// per action, every hot key registered from the settings at setup and again after each
// change of any of them, and each menu item told the hot key that it mirrors.
class HotKeyBindings {
public:
    struct Actions {
        std::function<void()> nameCurrent;
        std::function<void()> quickApplyNextPreset;
        std::function<void()> openSettings;
        std::function<void()> showBookmarks;
        std::function<void()> showSpaceSwitcher;
    };
    // Shows a hot key (none: no shortcut) on the menu item of its action. A hot key
    // without a menu key equivalent is shown as none.
    using MenuMirror = std::function<void(HotKeyAction, const std::optional<HotKey>&)>;

    HotKeyBindings(SettingsStore& settings, HotKeyManager& manager);
    ~HotKeyBindings();
    HotKeyBindings(const HotKeyBindings&) = delete;
    HotKeyBindings& operator=(const HotKeyBindings&) = delete;

    // Once, at launch: adds the five handlers in the order of allHotKeyActions, applies
    // the settings and re-applies them whenever a hot-key setting changes.
    void setup(Actions actions, MenuMirror mirror);
    // Registers every hot key from the settings (a cleared one is released) and
    // mirrors each on its menu item.
    void apply();
    // The manager's id for action's hot key; 0 before setup.
    quint32 token(HotKeyAction action) const;

    // The switcher panel's step to its next tile, set while a switcher exists; it
    // returns false when no panel is open. The switcher hot key calls it first and
    // opens the switcher only when it returns false.
    void setAdvanceOpenSwitcher(std::function<bool()> advance);

private:
    std::function<void()> handlerFor(HotKeyAction action) const;
    void switcherPressed() const;

    SettingsStore& settings_;
    HotKeyManager& manager_;
    Actions actions_;
    MenuMirror mirror_;
    std::function<bool()> advanceOpenSwitcher_;
    std::array<quint32, allHotKeyActions.size()> tokens_{};
};

} // namespace deskmark
