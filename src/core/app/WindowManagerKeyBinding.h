#pragma once

#include "core/model/HotKey.h"
#include "core/model/HotKeyAction.h"

#include <QString>

#include <optional>

namespace deskmark {

// Hot keys where the window manager owns the keyboard (sway on Wayland): the user binds
// each combination in sway's configuration to Deskmark's command line, and these are
// the lines to write there and the texts that say so.
class WindowManagerKeyBinding {
public:
    // The command line that runs the action in the running Deskmark: "deskmark switcher".
    static QString command(HotKeyAction action);
    // The key as sway's bindsym names it: the modifiers Ctrl, Mod1 (Alt), Shift, Mod4
    // (Super), then the key's keysym ("b", "Tab", "comma", "Prior"), joined by "+".
    static QString keys(const HotKey& key);
    // The configuration line: "bindsym Mod1+Mod4+Tab exec deskmark switcher".
    static QString bindsymLine(HotKeyAction action, const HotKey& key);
    // What the shortcut settings show under an action's recorder: the line to add to
    // sway's configuration, or for an action without a hot key the command to bind.
    static QString settingsNote(HotKeyAction action, const std::optional<HotKey>& key);
    // What a menu item shows beside its title instead of a shortcut that Deskmark
    // itself would hold: the keys and where they are bound.
    static QString menuShortcut(const HotKey& key);
};

} // namespace deskmark
