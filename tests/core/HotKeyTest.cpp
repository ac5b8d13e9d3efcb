#include "core/model/HotKey.h"
#include "core/HotKeyTestKeys.h"
#include "core/app/LinuxShortcutText.h"
#include "core/model/SettingsStore.h"
#include "platform/fake/MemoryDefaults.h"

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
    void displayString_data() {
        QTest::addColumn<quint32>("keyCode");
        QTest::addColumn<quint32>("modifiers");
        QTest::addColumn<QString>("text");
        QTest::newRow("four glyphs in their order")
            << 40u << (command | shift | option | control) << "⌃⌥⇧⌘K";
        QTest::newRow("bookmark default") << 11u << (option | command) << "⌥⌘B";
        QTest::newRow("option tab") << 48u << option << "⌥⇥";
        QTest::newRow("key code 0") << 0u << control << "⌃A";
        QTest::newRow("space") << 49u << shift << "⇧␣";
        QTest::newRow("page down") << 121u << command << "⌘⇟";
        QTest::newRow("F3") << 99u << 0u << "F3";
        QTest::newRow("backslash") << 42u << option << "⌥\\";
        QTest::newRow("grave") << 50u << control << "⌃`";
        QTest::newRow("unknown code") << 200u << command << "⌘?";
        QTest::newRow("foreign bits") << 11u << (command | 0x80u | 0x10000u) << "⌘B";
    }
    void displayString() {
        QFETCH(quint32, keyCode);
        QFETCH(quint32, modifiers);
        QFETCH(QString, text);
        QCOMPARE((HotKey{keyCode, modifiers}.displayString()), text);
    }

    // One table serves the glyph names, the Linux names and Qt's keys: a key has all
    // three or none.
    void everyNamedKeyHasEveryForm() {
        QSet<QString> glyphs;
        QSet<int> qtKeys;
        for (quint32 keyCode = 0; keyCode < 512; ++keyCode) {
            const HotKey key{keyCode, 0};
            const bool named = key.keyName() != QLatin1String("?");
            QCOMPARE(linuxShortcutText(keyCode, 0) != QLatin1String("?"), named);
            QCOMPARE(key.qtKeyCombination().has_value(), named);
            if (named) {
                glyphs.insert(key.keyName());
                qtKeys.insert(key.qtKeyCombination()->key());
            }
        }
        QCOMPARE(glyphs.size(), 73);
        QCOMPARE(qtKeys.size(), 73);
    }

    void menuKeyEquivalent_data() {
        QTest::addColumn<quint32>("keyCode");
        QTest::addColumn<QString>("equivalent"); // "<none>" for none
        QTest::newRow("A lower-cased") << 0u << "a";
        QTest::newRow("B lower-cased") << 11u << "b";
        QTest::newRow("digit") << 29u << "0";
        QTest::newRow("space") << 49u << " ";
        QTest::newRow("return") << 36u << "\r";
        QTest::newRow("tab") << 48u << "\t";
        QTest::newRow("backspace") << 51u << QString(QChar(8));
        QTest::newRow("escape") << 53u << QString(QChar(27));
        QTest::newRow("F1") << 122u << QString(QChar(0xF704));
        QTest::newRow("F12") << 111u << QString(QChar(0xF70F));
        QTest::newRow("up") << 126u << QString(QChar(0xF700));
        QTest::newRow("right") << 124u << QString(QChar(0xF703));
        QTest::newRow("forward delete") << 117u << QString(QChar(0xF728));
        QTest::newRow("home") << 115u << QString(QChar(0xF729));
        QTest::newRow("end") << 119u << QString(QChar(0xF72B));
        QTest::newRow("page up") << 116u << QString(QChar(0xF72C));
        QTest::newRow("page down") << 121u << QString(QChar(0xF72D));
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

    void everySettingRoundTripsThroughStorage() {
        for (const HotKeyAction action : allHotKeyActions) {
            MemoryDefaults defaults;
            const HotKey key{40, control | shift};
            storeOver(defaults)->setHotKey(action, key);
            QCOMPARE(storeOver(defaults)->hotKey(action), key);
            storeOver(defaults)->setHotKey(action, std::nullopt);
            QCOMPARE(storeOver(defaults)->hotKey(action), std::nullopt);
        }
        MemoryDefaults defaults;
        const auto store = storeOver(defaults);
        QCOMPARE(store->hotKey(HotKeyAction::Bookmark), store->bookmarkHotKey());
        QCOMPARE(store->hotKey(HotKeyAction::Switcher), (HotKey{48, option | command}));
        store->setHotKey(HotKeyAction::Preset, HotKey{35, option});
        QCOMPARE(store->presetHotKey(), (HotKey{35, option}));
        QCOMPARE(store->nameHotKey(), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(HotKeyTest)
#include "HotKeyTest.moc"
