#pragma once

#include <array>

namespace deskmark {

// The five actions a global hot key can start, each with its own hot-key setting and
// status-menu item.
enum class HotKeyAction {
    Name,     // edit the current Space's name and colour
    Preset,   // apply the next colour preset to the current Space
    Settings, // open the settings window
    Bookmark, // open the bookmark popup
    Switcher, // open the Space switcher, or advance the open one
};

// The order in which the hot keys are set up and applied.
inline constexpr std::array<HotKeyAction, 5> allHotKeyActions{
    HotKeyAction::Name, HotKeyAction::Preset, HotKeyAction::Settings, HotKeyAction::Bookmark,
    HotKeyAction::Switcher};

} // namespace deskmark
