#include "platform/linux/WaylandHotKeyRegistrar.h"

#include "core/model/KeyTable.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>

namespace deskmark {

namespace {

struct KeyPosition {
    quint32 keyCode;
    quint16 evdev;
};

// The portable key codes name keys by their place on the keyboard, as evdev codes do.
// clang-format off
constexpr std::array<KeyPosition, 73> positions{{
    {0, KEY_A},     {11, KEY_B},    {8, KEY_C},     {2, KEY_D},     {14, KEY_E},    {3, KEY_F},
    {5, KEY_G},     {4, KEY_H},     {34, KEY_I},    {38, KEY_J},    {40, KEY_K},    {37, KEY_L},
    {46, KEY_M},    {45, KEY_N},    {31, KEY_O},    {35, KEY_P},    {12, KEY_Q},    {15, KEY_R},
    {1, KEY_S},     {17, KEY_T},    {32, KEY_U},    {9, KEY_V},     {13, KEY_W},    {7, KEY_X},
    {16, KEY_Y},    {6, KEY_Z},
    {29, KEY_0},    {18, KEY_1},    {19, KEY_2},    {20, KEY_3},    {21, KEY_4},    {23, KEY_5},
    {22, KEY_6},    {26, KEY_7},    {28, KEY_8},    {25, KEY_9},
    {49, KEY_SPACE},        {36, KEY_ENTER},        {48, KEY_TAB},          {53, KEY_ESC},
    {51, KEY_BACKSPACE},    {117, KEY_DELETE},      {115, KEY_HOME},        {119, KEY_END},
    {116, KEY_PAGEUP},      {121, KEY_PAGEDOWN},    {123, KEY_LEFT},        {124, KEY_RIGHT},
    {126, KEY_UP},          {125, KEY_DOWN},
    {122, KEY_F1},  {120, KEY_F2},  {99, KEY_F3},   {118, KEY_F4},  {96, KEY_F5},   {97, KEY_F6},
    {98, KEY_F7},   {100, KEY_F8},  {101, KEY_F9},  {109, KEY_F10}, {103, KEY_F11}, {111, KEY_F12},
    {47, KEY_DOT},          {43, KEY_COMMA},        {27, KEY_MINUS},        {24, KEY_EQUAL},
    {44, KEY_SLASH},        {42, KEY_BACKSLASH},    {41, KEY_SEMICOLON},    {39, KEY_APOSTROPHE},
    {33, KEY_LEFTBRACE},    {30, KEY_RIGHTBRACE},   {50, KEY_GRAVE},
}};
// clang-format on

// XKB numbers keys as evdev does, plus 8.
constexpr quint32 xkbOffset = 8;

} // namespace

bool WaylandHotKeyRegistrar::registerHotKey(quint32, quint32 keyCode, quint32) {
    return KeyTable::find(keyCode) != nullptr;
}

void WaylandHotKeyRegistrar::unregisterHotKey(quint32) {}

std::optional<quint32> WaylandHotKeyRegistrar::keyCodeForScanCode(quint32 nativeScanCode) const {
    if (nativeScanCode < xkbOffset)
        return std::nullopt;
    const quint32 evdev = nativeScanCode - xkbOffset;
    const auto it = std::find_if(positions.begin(), positions.end(),
                                 [evdev](const KeyPosition& key) { return key.evdev == evdev; });
    if (it == positions.end())
        return std::nullopt;
    return it->keyCode;
}

} // namespace deskmark
