#include "core/app/LinuxShortcutText.h"

#include "core/model/KeyTable.h"

#include <QStringList>

namespace deskmark {

QString linuxShortcutText(quint32 keyCode, quint32 carbonModifiers) {
    QStringList parts;
    for (const KeyTable::Modifier& modifier : KeyTable::modifiers()) {
        if (carbonModifiers & modifier.carbon)
            parts << QString::fromLatin1(modifier.linuxName);
    }
    const KeyTable::Entry* key = KeyTable::find(keyCode);
    parts << (key ? QString::fromLatin1(key->linuxName) : QStringLiteral("?"));
    return parts.join(QLatin1Char('+'));
}

} // namespace deskmark
