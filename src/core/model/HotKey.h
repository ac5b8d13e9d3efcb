#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>
#include <qnamespace.h>

#include <optional>

namespace deskmark {

// A global hot key: a macOS virtual key code (11 = B, 48 = Tab, ...) and a set of
// Carbon modifier bits. The settings keep hot keys in this portable form on every
// platform; each platform's registrar translates it to its own keys.
struct HotKey {
    // The Carbon modifier bits.
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

    // The key's glyph name ("B", "⇥", "F5"); "?" for a key code without a name.
    QString keyName() const;
    // The macOS form: the glyphs ⌃⌥⇧⌘ of the modifiers present, in that order, then
    // keyName ("⌥⌘B").
    QString displayString() const;
    // The character a macOS menu item takes as its key equivalent: control characters
    // for Return, Tab, Space, Backspace and Escape, the private-use function-key
    // characters for F1-F12 and the navigation keys, the lower-cased name of any other
    // one-character ASCII key; none for the rest.
    std::optional<QString> menuKeyEquivalent() const;
    // The key and modifiers as Qt names them (Super as Meta); none for a key code
    // without a name.
    std::optional<QKeyCombination> qtKeyCombination() const;

    // The Carbon bits of Qt's modifier flags as Qt reports them on Linux, where Meta is
    // the Super key; keypad and group-switch flags are dropped.
    static quint32 carbonModifiers(Qt::KeyboardModifiers flags);
};

} // namespace deskmark
