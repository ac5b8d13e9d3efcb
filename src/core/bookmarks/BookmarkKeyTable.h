#pragma once

#include <qnamespace.h>

namespace deskmark {

// What a key pressed in the bookmark popup asks for.
struct BookmarkKeyCommand {
    enum class Kind {
        None,             // not the popup's key: left to the focused control
        Close,            // Escape, also when pinned
        ScaleUp,          // Ctrl+Plus (or Ctrl+=, keypad plus)
        ScaleDown,        // Ctrl+Minus (or Ctrl+_, keypad minus)
        MoveBookmarkUp,   // Alt+Up
        MoveBookmarkDown, // Alt+Down
        MoveGroupUp,      // Shift+Alt+Up
        MoveGroupDown,    // Shift+Alt+Down
        Capture,          // Alt+C
        Edit,             // Alt+E
        RenameGroup,      // Shift+Alt+E
        Add,              // Alt+N
        NewGroup,         // Shift+Alt+N
        Open,             // Enter
        Remove,           // Delete or BackSpace
        Copy,             // Left
        OpenAlternate,    // Right: a new browser window, or a terminal
        OpenInEditor,     // Shift+Right
        SelectNext,       // Down
        SelectPrevious,   // Up
        QuickOpen,        // 1 to 9: `position` is the digit
    };
    Kind kind = Kind::None;
    int position = 0;

    friend bool operator==(const BookmarkKeyCommand&, const BookmarkKeyCommand&) = default;
};

// The popup's keys. The modifiers keep the Linux meaning of their Mac counterparts:
// command is Ctrl, option is Alt, shift is Shift and control is Super; each key is matched
// with exactly the modifier set it lists, so Ctrl+Alt+Up, for one, is nothing.
namespace BookmarkKeyTable {

BookmarkKeyCommand command(int key, Qt::KeyboardModifiers modifiers);

} // namespace BookmarkKeyTable

} // namespace deskmark
