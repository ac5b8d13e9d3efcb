#include "core/app/WindowManagerKeyBinding.h"

#include "core/app/CommandLine.h"
#include "core/app/Language.h"
#include "core/app/LinuxShortcutText.h"
#include "core/model/KeyTable.h"

#include <QHash>
#include <QStringList>

namespace deskmark {

namespace {

// The keysym of every key whose keysym is not its Linux name (letters are lower case).
QString keysym(const KeyTable::Entry& key) {
    static const QHash<QString, QString> renamed{
        {QStringLiteral("Space"), QStringLiteral("space")},
        {QStringLiteral("Esc"), QStringLiteral("Escape")},
        {QStringLiteral("Backspace"), QStringLiteral("BackSpace")},
        {QStringLiteral("PgUp"), QStringLiteral("Prior")},
        {QStringLiteral("PgDown"), QStringLiteral("Next")},
        {QStringLiteral("."), QStringLiteral("period")},
        {QStringLiteral(","), QStringLiteral("comma")},
        {QStringLiteral("-"), QStringLiteral("minus")},
        {QStringLiteral("="), QStringLiteral("equal")},
        {QStringLiteral("/"), QStringLiteral("slash")},
        {QStringLiteral("\\"), QStringLiteral("backslash")},
        {QStringLiteral(";"), QStringLiteral("semicolon")},
        {QStringLiteral("'"), QStringLiteral("apostrophe")},
        {QStringLiteral("["), QStringLiteral("bracketleft")},
        {QStringLiteral("]"), QStringLiteral("bracketright")},
        {QStringLiteral("`"), QStringLiteral("grave")},
    };
    const QString name = QString::fromLatin1(key.linuxName);
    if (const auto it = renamed.constFind(name); it != renamed.constEnd())
        return *it;
    return name.size() == 1 ? name.toLower() : name;
}

} // namespace

QString WindowManagerKeyBinding::command(HotKeyAction action) {
    return QStringLiteral("deskmark ") + CommandLine::commandWord(action);
}

QString WindowManagerKeyBinding::keys(const HotKey& key) {
    // KeyTable lists the modifiers as Ctrl, Alt, Shift, Super; sway calls Alt and Super
    // by their X modifier names.
    QStringList parts;
    for (const KeyTable::Modifier& modifier : KeyTable::modifiers()) {
        if (!(key.modifiers & modifier.carbon))
            continue;
        if (modifier.carbon == HotKey::optionModifier)
            parts << QStringLiteral("Mod1");
        else if (modifier.carbon == HotKey::commandModifier)
            parts << QStringLiteral("Mod4");
        else
            parts << QString::fromLatin1(modifier.linuxName);
    }
    const KeyTable::Entry* entry = KeyTable::find(key.keyCode);
    parts << (entry ? keysym(*entry) : QStringLiteral("?"));
    return parts.join(QLatin1Char('+'));
}

QString WindowManagerKeyBinding::bindsymLine(HotKeyAction action, const HotKey& key) {
    return QStringLiteral("bindsym %1 exec %2").arg(keys(key), command(action));
}

QString WindowManagerKeyBinding::settingsNote(HotKeyAction action,
                                              const std::optional<HotKey>& key) {
    if (!key)
        return localized("sway の設定でキーに割り当てるコマンド: %1",
                         "To bind a key in sway's config, run: %1")
            .arg(command(action));
    return localized("sway の設定に書いてください: %1", "Set in sway's config: %1")
        .arg(bindsymLine(action, *key));
}

QString WindowManagerKeyBinding::menuShortcut(const HotKey& key) {
    return localized("%1（sway の設定）", "%1 (in sway's config)")
        .arg(linuxShortcutText(key.keyCode, key.modifiers));
}

} // namespace deskmark
