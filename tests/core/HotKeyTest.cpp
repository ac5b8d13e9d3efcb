#include "core/model/HotKey.h"
#include "core/HotKeyTestKeys.h"
#include "core/app/LinuxShortcutText.h"
#include "core/app/WindowManagerKeyBinding.h"
#include "core/model/SettingsStore.h"
#include "platform/fake/MemoryDefaults.h"
#include "platform/linux/WaylandHotKeyRegistrar.h"

#include <QSet>
#include <QTest>

using namespace deskmark;

namespace {

std::unique_ptr<SettingsStore> storeOver(Defaults& defaults) {
    return std::make_unique<SettingsStore>(defaults, plainPlatformDefaults());
}
} // namespace

class HotKeyTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // The same key in both notations: the glyphs the settings show and the Linux names
    // the menus and recorders show.
    void displayString_data() {
        QTest::addColumn<quint32>("keyCode");
        QTest::addColumn<quint32>("modifiers");
        QTest::addColumn<QString>("glyphs");
        QTest::addColumn<QString>("linuxText");
        QTest::newRow("all four in order") << 40u << (command | shift | option | control) << "⌃⌥⇧⌘K"
                                           << "Ctrl+Alt+Shift+Super+K";
        QTest::newRow("key code 0, bare") << 0u << 0u << "A"
                                          << "A";
        QTest::newRow("named key") << 53u << control << "⌃⎋"
                                   << "Ctrl+Esc";
        QTest::newRow("unknown code") << 200u << command << "⌘?"
                                      << "Super+?";
        QTest::newRow("foreign bits") << keyB << (command | 0x80u | 0x10000u) << "⌘B"
                                      << "Super+B";
    }
    void displayString() {
        QFETCH(quint32, keyCode);
        QFETCH(quint32, modifiers);
        QFETCH(QString, glyphs);
        QFETCH(QString, linuxText);
        QCOMPARE((HotKey{keyCode, modifiers}.displayString()), glyphs);
        QCOMPARE(linuxShortcutText(keyCode, modifiers), linuxText);
    }

    // One table serves the glyph names, the Linux names, Qt's keys and sway's keysyms: a
    // key has all of them or none. On Wayland every named key is reached from exactly
    // one scan code, by its place on the keyboard.
    void everyNamedKeyHasEveryForm() {
        QSet<QString> glyphs;
        QSet<QString> linuxNames;
        QSet<int> qtKeys;
        QSet<QString> keysyms;
        for (quint32 keyCode = 0; keyCode < 512; ++keyCode) {
            const HotKey key{keyCode, 0};
            const bool named = key.keyName() != QLatin1String("?");
            QCOMPARE(linuxShortcutText(keyCode, 0) != QLatin1String("?"), named);
            QCOMPARE(key.qtKeyCombination().has_value(), named);
            if (named) {
                glyphs.insert(key.keyName());
                linuxNames.insert(linuxShortcutText(keyCode, 0));
                qtKeys.insert(key.qtKeyCombination()->key());
                keysyms.insert(WindowManagerKeyBinding::keys(key));
            }
        }
        QVERIFY(!keysyms.contains(QStringLiteral("?")));
        QCOMPARE(keysyms.size(), 73);
        const WaylandHotKeyRegistrar wayland;
        QSet<quint32> reached;
        for (quint32 scanCode = 0; scanCode < 300; ++scanCode) {
            if (const std::optional<quint32> keyCode = wayland.keyCodeForScanCode(scanCode)) {
                QVERIFY((HotKey{*keyCode, 0}.keyName() != QLatin1String("?")));
                reached.insert(*keyCode);
            }
        }
        QCOMPARE(reached.size(), 73);
        QCOMPARE(wayland.keyCodeForScanCode(56), keyB); // evdev KEY_B
        QCOMPARE(wayland.keyCodeForScanCode(23), keyTab);
        QCOMPARE(glyphs.size(), 73);
        QCOMPARE(linuxNames.size(), 73);
        QCOMPARE(qtKeys.size(), 73);
    }

    void menuKeyEquivalent_data() {
        QTest::addColumn<quint32>("keyCode");
        QTest::addColumn<QString>("equivalent"); // "<none>" for none
        QTest::newRow("letter lower-cased") << 11u << "b";
        QTest::newRow("return") << 36u << "\r";
        QTest::newRow("F12") << 111u << QString(QChar(0xF70F));
        QTest::newRow("backslash") << 42u << "\\";
        QTest::newRow("unknown") << 200u << "<none>";
    }
    void menuKeyEquivalent() {
        QFETCH(quint32, keyCode);
        QFETCH(QString, equivalent);
        const std::optional<QString> got = HotKey{keyCode, command}.menuKeyEquivalent();
        QCOMPARE(got.value_or(QStringLiteral("<none>")), equivalent);
    }

    void carbonModifiersFromQt() {
        QCOMPARE(HotKey::carbonModifiers(Qt::MetaModifier | Qt::AltModifier), option | command);
        QCOMPARE(HotKey::carbonModifiers(Qt::ShiftModifier), shift);
        QCOMPARE(HotKey::carbonModifiers(Qt::ControlModifier | Qt::KeypadModifier |
                                         Qt::GroupSwitchModifier),
                 control);
        QCOMPARE(HotKey::carbonModifiers(Qt::NoModifier), 0u);
        // Every set of the four survives the way to Qt and back.
        for (quint32 set = 0; set < 16; ++set) {
            const quint32 bits = (set & 1 ? command : 0) | (set & 2 ? shift : 0) |
                                 (set & 4 ? option : 0) | (set & 8 ? control : 0);
            const auto combination = HotKey{48, bits}.qtKeyCombination();
            QCOMPARE(combination->key(), Qt::Key_Tab);
            QCOMPARE(HotKey::carbonModifiers(combination->keyboardModifiers()), bits);
        }
    }

    // Each action reads and writes a setting of its own, and a cleared key stays cleared.
    void everyActionHasItsOwnSetting() {
        MemoryDefaults defaults;
        for (const HotKeyAction action : allHotKeyActions)
            storeOver(defaults)->setHotKey(action, HotKey{quint32(action), control});
        const auto store = storeOver(defaults);
        QCOMPARE(store->presetHotKey(), (HotKey{quint32(HotKeyAction::Preset), control}));
        for (const HotKeyAction action : allHotKeyActions) {
            QCOMPARE(store->hotKey(action), (HotKey{quint32(action), control}));
            store->setHotKey(action, std::nullopt);
            QCOMPARE(storeOver(defaults)->hotKey(action), std::nullopt);
        }
    }
};

QTEST_GUILESS_MAIN(HotKeyTest)
#include "HotKeyTest.moc"
