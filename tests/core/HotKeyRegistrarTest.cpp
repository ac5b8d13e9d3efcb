#include "core/HotKeyTestKeys.h"
#include "core/app/LinuxShortcutText.h"
#include "core/model/HotKey.h"
#include "platform/fake/FakeHotKeyRegistrar.h"

#include <QSet>
#include <QSignalSpy>
#include <QTest>

using namespace deskmark;

class HotKeyRegistrarTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void shortcutText_data() {
        QTest::addColumn<quint32>("keyCode");
        QTest::addColumn<quint32>("modifiers");
        QTest::addColumn<QString>("text");
        QTest::newRow("all four in Linux order")
            << 40u << (command | shift | option | control) << "Ctrl+Alt+Shift+Super+K";
        QTest::newRow("bookmark default") << keyB << (option | command) << "Alt+Super+B";
        QTest::newRow("shift alone") << 18u << shift << "Shift+1";
        QTest::newRow("bare key") << 0u << 0u << "A";
        QTest::newRow("escape") << 53u << control << "Ctrl+Esc";
        QTest::newRow("page up") << 116u << command << "Super+PgUp";
        QTest::newRow("F12") << 111u << option << "Alt+F12";
        QTest::newRow("backslash") << 42u << control << "Ctrl+\\";
        QTest::newRow("unknown key") << 200u << control << "Ctrl+?";
        QTest::newRow("foreign bits ignored") << keyB << (command | 0x10000u | 0x1u) << "Super+B";
    }
    void shortcutText() {
        QFETCH(quint32, keyCode);
        QFETCH(quint32, modifiers);
        QFETCH(QString, text);
        QCOMPARE(linuxShortcutText(keyCode, modifiers), text);
    }

    void every73KeysHasItsOwnName() {
        QSet<QString> names;
        int named = 0;
        for (quint32 keyCode = 0; keyCode < 256; ++keyCode) {
            const QString name = linuxShortcutText(keyCode, 0);
            if (name == QLatin1String("?"))
                continue;
            ++named;
            names.insert(name);
        }
        QCOMPARE(named, 73);
        QCOMPARE(names.size(), 73);
    }

    // The fake keeps the contract of the X11 registrar, which the shell relies on.
    void fakeKeepsTheRegistrarContract() {
        FakeHotKeyRegistrar registrar;
        QSignalSpy spy(&registrar, &HotKeyRegistrar::pressed);
        registrar.setTakenByOthers(keyB, option | command);
        QVERIFY(!registrar.registerHotKey(1, keyB, option | command));
        QVERIFY(registrar.registerHotKey(1, keyB, control));
        QVERIFY(!registrar.registerHotKey(2, keyB, control)); // id 1 holds it
        QVERIFY(!registrar.registration(2));
        QVERIFY(registrar.registerHotKey(1, keyTab, option)); // replaces id 1's old key
        QVERIFY(registrar.registerHotKey(2, keyB, control));
        registrar.press(keyTab, option);
        registrar.unregisterHotKey(2);
        registrar.press(keyB, control);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toUInt(), 1u);
    }
};

QTEST_GUILESS_MAIN(HotKeyRegistrarTest)
#include "HotKeyRegistrarTest.moc"
