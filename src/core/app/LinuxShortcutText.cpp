#include "core/app/LinuxShortcutText.h"

#include "core/app/HotKeyRegistrar.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace deskmark {

namespace {

struct KeyName {
    quint32 keyCode;
    const char* name;
};

// macOS virtual key codes and their names on Linux.
constexpr std::array<KeyName, 73> keyNames{{
    {0, "A"},          {11, "B"},       {8, "C"},       {2, "D"},     {14, "E"},
    {3, "F"},          {5, "G"},        {4, "H"},       {34, "I"},    {38, "J"},
    {40, "K"},         {37, "L"},       {46, "M"},      {45, "N"},    {31, "O"},
    {35, "P"},         {12, "Q"},       {15, "R"},      {1, "S"},     {17, "T"},
    {32, "U"},         {9, "V"},        {13, "W"},      {7, "X"},     {16, "Y"},
    {6, "Z"},          {29, "0"},       {18, "1"},      {19, "2"},    {20, "3"},
    {21, "4"},         {23, "5"},       {22, "6"},      {26, "7"},    {28, "8"},
    {25, "9"},         {49, "Space"},   {36, "Return"}, {48, "Tab"},  {53, "Esc"},
    {51, "Backspace"}, {117, "Delete"}, {115, "Home"},  {119, "End"}, {116, "PgUp"},
    {121, "PgDown"},   {123, "Left"},   {124, "Right"}, {126, "Up"},  {125, "Down"},
    {122, "F1"},       {120, "F2"},     {99, "F3"},     {118, "F4"},  {96, "F5"},
    {97, "F6"},        {98, "F7"},      {100, "F8"},    {101, "F9"},  {109, "F10"},
    {103, "F11"},      {111, "F12"},    {47, "."},      {43, ","},    {27, "-"},
    {24, "="},         {44, "/"},       {42, "\\"},     {41, ";"},    {39, "'"},
    {33, "["},         {30, "]"},       {50, "`"},
}};

struct ModifierName {
    quint32 bit;
    const char* name;
};

constexpr std::array<ModifierName, 4> modifierNames{{
    {HotKeyRegistrar::controlModifier, "Ctrl"},
    {HotKeyRegistrar::optionModifier, "Alt"},
    {HotKeyRegistrar::shiftModifier, "Shift"},
    {HotKeyRegistrar::commandModifier, "Super"},
}};

} // namespace

QString linuxShortcutText(quint32 keyCode, quint32 carbonModifiers) {
    QStringList parts;
    for (const ModifierName& modifier : modifierNames) {
        if (carbonModifiers & modifier.bit)
            parts << QString::fromLatin1(modifier.name);
    }
    const auto key = std::find_if(keyNames.begin(), keyNames.end(),
                                  [keyCode](const KeyName& k) { return k.keyCode == keyCode; });
    parts << (key != keyNames.end() ? QString::fromLatin1(key->name) : QStringLiteral("?"));
    return parts.join(QLatin1Char('+'));
}

} // namespace deskmark
