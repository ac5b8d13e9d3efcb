#pragma once

#include <QString>
#include <QtGlobal>

namespace deskmark {

// A hot key written the way Linux desktops write shortcuts: the modifiers in the order
// Ctrl, Alt, Shift, Super (Carbon control, option, shift, command), then the key's
// name, joined by "+", e.g. "Ctrl+Alt+Shift+Super+K". Letters are upper case, the
// other keys use the short names of desktop shortcut editors ("Esc", "PgUp", "F5"),
// punctuation is the character itself; a key code without a name gives "?".
QString linuxShortcutText(quint32 keyCode, quint32 carbonModifiers);

} // namespace deskmark
