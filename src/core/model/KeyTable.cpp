#include "core/model/KeyTable.h"

#include "core/model/HotKey.h"

#include <algorithm>
#include <array>

namespace deskmark {

namespace {

// clang-format off
constexpr std::array<KeyTable::Entry, 73> table{{
    // letters
    {0, "A", "A", Qt::Key_A},     {11, "B", "B", Qt::Key_B},    {8, "C", "C", Qt::Key_C},
    {2, "D", "D", Qt::Key_D},     {14, "E", "E", Qt::Key_E},    {3, "F", "F", Qt::Key_F},
    {5, "G", "G", Qt::Key_G},     {4, "H", "H", Qt::Key_H},     {34, "I", "I", Qt::Key_I},
    {38, "J", "J", Qt::Key_J},    {40, "K", "K", Qt::Key_K},    {37, "L", "L", Qt::Key_L},
    {46, "M", "M", Qt::Key_M},    {45, "N", "N", Qt::Key_N},    {31, "O", "O", Qt::Key_O},
    {35, "P", "P", Qt::Key_P},    {12, "Q", "Q", Qt::Key_Q},    {15, "R", "R", Qt::Key_R},
    {1, "S", "S", Qt::Key_S},     {17, "T", "T", Qt::Key_T},    {32, "U", "U", Qt::Key_U},
    {9, "V", "V", Qt::Key_V},     {13, "W", "W", Qt::Key_W},    {7, "X", "X", Qt::Key_X},
    {16, "Y", "Y", Qt::Key_Y},    {6, "Z", "Z", Qt::Key_Z},
    // digits
    {29, "0", "0", Qt::Key_0},    {18, "1", "1", Qt::Key_1},    {19, "2", "2", Qt::Key_2},
    {20, "3", "3", Qt::Key_3},    {21, "4", "4", Qt::Key_4},    {23, "5", "5", Qt::Key_5},
    {22, "6", "6", Qt::Key_6},    {26, "7", "7", Qt::Key_7},    {28, "8", "8", Qt::Key_8},
    {25, "9", "9", Qt::Key_9},
    // special keys
    {49, "␣", "Space", Qt::Key_Space},          {36, "↩", "Return", Qt::Key_Return},
    {48, "⇥", "Tab", Qt::Key_Tab},              {53, "⎋", "Esc", Qt::Key_Escape},
    {51, "⌫", "Backspace", Qt::Key_Backspace},  {117, "⌦", "Delete", Qt::Key_Delete},
    {115, "↖", "Home", Qt::Key_Home},           {119, "↘", "End", Qt::Key_End},
    {116, "⇞", "PgUp", Qt::Key_PageUp},         {121, "⇟", "PgDown", Qt::Key_PageDown},
    {123, "←", "Left", Qt::Key_Left},           {124, "→", "Right", Qt::Key_Right},
    {126, "↑", "Up", Qt::Key_Up},               {125, "↓", "Down", Qt::Key_Down},
    // function keys
    {122, "F1", "F1", Qt::Key_F1},    {120, "F2", "F2", Qt::Key_F2},    {99, "F3", "F3", Qt::Key_F3},
    {118, "F4", "F4", Qt::Key_F4},    {96, "F5", "F5", Qt::Key_F5},     {97, "F6", "F6", Qt::Key_F6},
    {98, "F7", "F7", Qt::Key_F7},     {100, "F8", "F8", Qt::Key_F8},    {101, "F9", "F9", Qt::Key_F9},
    {109, "F10", "F10", Qt::Key_F10}, {103, "F11", "F11", Qt::Key_F11}, {111, "F12", "F12", Qt::Key_F12},
    // punctuation
    {47, ".", ".", Qt::Key_Period},     {43, ",", ",", Qt::Key_Comma},
    {27, "-", "-", Qt::Key_Minus},      {24, "=", "=", Qt::Key_Equal},
    {44, "/", "/", Qt::Key_Slash},      {42, "\\", "\\", Qt::Key_Backslash},
    {41, ";", ";", Qt::Key_Semicolon},  {39, "'", "'", Qt::Key_Apostrophe},
    {33, "[", "[", Qt::Key_BracketLeft}, {30, "]", "]", Qt::Key_BracketRight},
    {50, "`", "`", Qt::Key_QuoteLeft},
}};
// clang-format on

constexpr std::array<KeyTable::Modifier, 4> modifierTable{{
    {HotKey::controlModifier, Qt::ControlModifier, "⌃", "Ctrl"},
    {HotKey::optionModifier, Qt::AltModifier, "⌥", "Alt"},
    {HotKey::shiftModifier, Qt::ShiftModifier, "⇧", "Shift"},
    {HotKey::commandModifier, Qt::MetaModifier, "⌘", "Super"},
}};

} // namespace

const KeyTable::Entry* KeyTable::find(quint32 keyCode) {
    const auto it = std::find_if(table.begin(), table.end(), [keyCode](const Entry& entry) {
        return entry.keyCode == keyCode;
    });
    return it != table.end() ? &*it : nullptr;
}

std::span<const KeyTable::Modifier> KeyTable::modifiers() {
    return modifierTable;
}

} // namespace deskmark
