#pragma once

#include <QtGlobal>
#include <qnamespace.h>

#include <span>

namespace deskmark {

// The keys a hot key can name: macOS virtual key codes, the portable form in which the
// settings keep them, with every way the program shows or matches each key.
class KeyTable {
public:
    struct Entry {
        quint32 keyCode;
        const char* glyph;     // UTF-8, as macOS menus write it: "B", "⇥", "F5"
        const char* linuxName; // as Linux shortcut editors write it: "B", "Tab", "PgUp"
        Qt::Key qtKey;         // the unshifted key as Qt reports it
    };

    // The entry of keyCode, or nullptr when the table has none.
    static const Entry* find(quint32 keyCode);

    struct Modifier {
        quint32 carbon; // the Carbon bit
        Qt::KeyboardModifier qt;
        const char* glyph;     // UTF-8: "⌃", "⌥", "⇧", "⌘"
        const char* linuxName; // "Ctrl", "Alt", "Shift", "Super"
    };
    // Control, option, shift, command: the order in which both macOS and Linux write them.
    static std::span<const Modifier> modifiers();
};

} // namespace deskmark
