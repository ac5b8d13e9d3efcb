#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <optional>

namespace deskmark {

// A global hot key: a macOS virtual key code (11 = B, 48 = Tab, ...) and a set of
// Carbon modifier bits. The settings keep hot keys in this portable form on every
// platform; each platform's registrar translates it to its own keys.
struct HotKey {
    static constexpr quint32 commandModifier = 0x100;
    static constexpr quint32 shiftModifier = 0x200;
    static constexpr quint32 optionModifier = 0x800;
    static constexpr quint32 controlModifier = 0x1000;

    quint32 keyCode = 0;
    quint32 modifiers = 0;

    friend bool operator==(const HotKey&, const HotKey&) = default;

    // The stored record: {"keyCode":N,"modifiers":M}.
    QByteArray toJson() const;
    // Reads a stored record; none unless it is an object whose "keyCode" and
    // "modifiers" are both whole numbers in the unsigned 32-bit range.
    static std::optional<HotKey> fromJson(const QByteArray& json);
};

} // namespace deskmark
