#pragma once

#include "core/app/HotKeyBindings.h"
#include "core/model/HotKey.h"
#include "core/model/SettingsStore.h"

#include <map>

// The Carbon modifier bits and macOS key codes the hot-key tests press.
inline constexpr quint32 command = deskmark::HotKey::commandModifier;
inline constexpr quint32 shift = deskmark::HotKey::shiftModifier;
inline constexpr quint32 option = deskmark::HotKey::optionModifier;
inline constexpr quint32 control = deskmark::HotKey::controlModifier;
inline constexpr quint32 keyB = 11;
inline constexpr quint32 keyK = 40;
inline constexpr quint32 keyTab = 48;

// Settings without platform particulars: no terminal, no editor, no login item.
inline deskmark::SettingsStore::PlatformDefaults plainPlatformDefaults() {
    return {QString(), [] { return QString(); }, false};
}

// Actions that count their runs in `ran`, by the names "name", "preset", "settings",
// "bookmark" and "switcher".
inline deskmark::HotKeyBindings::Actions countingActions(std::map<QString, int>& ran) {
    const auto count = [&ran](const char* name) {
        return [&ran, name] { ++ran[QString::fromLatin1(name)]; };
    };
    return {count("name"), count("preset"), count("settings"), count("bookmark"),
            count("switcher")};
}
