#include "core/bookmarks/BookmarkKeyTable.h"

namespace deskmark::BookmarkKeyTable {

namespace {
using Kind = BookmarkKeyCommand::Kind;

constexpr Qt::KeyboardModifiers kCommand = Qt::ControlModifier;
constexpr Qt::KeyboardModifiers kOption = Qt::AltModifier;
constexpr Qt::KeyboardModifiers kShift = Qt::ShiftModifier;
constexpr Qt::KeyboardModifiers kControl = Qt::MetaModifier;

BookmarkKeyCommand make(Kind kind) { return {kind, 0}; }

// Ctrl with or without Shift ("+" is a shifted key on most layouts), nothing else;
// the keypad's plus and minus arrive as the same keys.
BookmarkKeyCommand scaleKey(int key, Qt::KeyboardModifiers mods) {
    if (!(mods & kCommand) || (mods & (kControl | kOption)))
        return {};
    if (key == Qt::Key_Plus || key == Qt::Key_Equal)
        return make(Kind::ScaleUp);
    if (key == Qt::Key_Minus || key == Qt::Key_Underscore)
        return make(Kind::ScaleDown);
    return {};
}

// Alt or Shift+Alt with Up, Down, C, E or N.
BookmarkKeyCommand optionKey(int key, Qt::KeyboardModifiers mods) {
    if (!(mods & kOption) || (mods & (kCommand | kControl)))
        return {};
    const bool shift = mods & kShift;
    switch (key) {
    case Qt::Key_Up:
        return make(shift ? Kind::MoveGroupUp : Kind::MoveBookmarkUp);
    case Qt::Key_Down:
        return make(shift ? Kind::MoveGroupDown : Kind::MoveBookmarkDown);
    case Qt::Key_C:
        return make(shift ? Kind::None : Kind::Capture);
    case Qt::Key_E:
        return make(shift ? Kind::RenameGroup : Kind::Edit);
    case Qt::Key_N:
        return make(shift ? Kind::NewGroup : Kind::Add);
    default:
        return {};
    }
}

// The keys without modifiers (Shift only where it says so).
BookmarkKeyCommand plainKey(int key, Qt::KeyboardModifiers mods) {
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        return make(mods & (kCommand | kControl | kOption) ? Kind::None : Kind::Open);
    if (key == Qt::Key_Right && mods == kShift)
        return make(Kind::OpenInEditor);
    if (mods != Qt::NoModifier)
        return {};
    switch (key) {
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        return make(Kind::Remove);
    case Qt::Key_Left:
        return make(Kind::Copy);
    case Qt::Key_Right:
        return make(Kind::OpenAlternate);
    case Qt::Key_Down:
        return make(Kind::SelectNext);
    case Qt::Key_Up:
        return make(Kind::SelectPrevious);
    default:
        break;
    }
    if (key >= Qt::Key_1 && key <= Qt::Key_9)
        return {Kind::QuickOpen, key - Qt::Key_0};
    return {};
}
} // namespace

BookmarkKeyCommand command(int key, Qt::KeyboardModifiers modifiers) {
    if (key == Qt::Key_Escape)
        return make(Kind::Close);
    // The keypad is where a key sits, not a modifier the user holds.
    const Qt::KeyboardModifiers mods = modifiers & ~Qt::KeypadModifier;
    for (const auto& rule : {scaleKey, optionKey, plainKey}) {
        if (const BookmarkKeyCommand found = rule(key, mods); found.kind != Kind::None)
            return found;
    }
    return {};
}

} // namespace deskmark::BookmarkKeyTable
