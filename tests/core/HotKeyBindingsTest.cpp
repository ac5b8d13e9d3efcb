#include "core/app/HotKeyBindings.h"
#include "core/HotKeyTestKeys.h"
#include "platform/fake/FakeHotKeyRegistrar.h"
#include "platform/fake/MemoryDefaults.h"

#include <QSignalSpy>
#include <QTest>

using namespace deskmark;

namespace {

using Registration = std::optional<FakeHotKeyRegistrar::Combination>;

// The program's hot keys over the fake registrar, with every action counted and every
// menu item's shortcut kept as the menu would show it.
struct Shell {
    MemoryDefaults defaults;
    SettingsStore settings{defaults, plainPlatformDefaults()};
    FakeHotKeyRegistrar registrar;
    HotKeyManager manager{registrar};
    std::unique_ptr<HotKeyBindings> bindings = std::make_unique<HotKeyBindings>(settings, manager);
    std::map<QString, int> ran;
    std::map<HotKeyAction, std::optional<HotKey>> menu;
    int mirrorCalls = 0;

    explicit Shell(const QJsonObject& stored = {}) : defaults(stored) {}

    void setup() {
        bindings->setup(countingActions(ran),
                        [this](HotKeyAction action, const std::optional<HotKey>& key) {
                            menu[action] = key;
                            ++mirrorCalls;
                        });
    }
    Registration registration(HotKeyAction action) const {
        return registrar.registration(bindings->token(action));
    }
};
} // namespace

class HotKeyBindingsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void freshInstallRegistersTheTwoDefaults() {
        Shell shell;
        shell.setup();
        for (const HotKeyAction action : allHotKeyActions)
            QCOMPARE(shell.bindings->token(action), quint32(action) + 1); // 1 to 5 in order
        for (const auto action : {HotKeyAction::Name, HotKeyAction::Preset, HotKeyAction::Settings})
            QCOMPARE(shell.registration(action), std::nullopt);
        QCOMPARE(shell.registration(HotKeyAction::Bookmark),
                 (Registration{{keyB, option | command}}));
        QCOMPARE(shell.registration(HotKeyAction::Switcher),
                 (Registration{{keyTab, option | command}}));
        QCOMPARE(shell.mirrorCalls, 5);
        QCOMPARE(shell.menu[HotKeyAction::Bookmark], (HotKey{keyB, option | command}));
        QCOMPARE(shell.menu[HotKeyAction::Name], std::nullopt);

        shell.registrar.press(keyB, option | command);
        shell.registrar.press(keyTab, option | command);
        QCOMPARE(shell.ran, (std::map<QString, int>{{"bookmark", 1}, {"switcher", 1}}));
    }

    void storedKeysAreRegisteredAndRunTheirActions() {
        QJsonObject stored{{"nameHotKey", QString::fromUtf8(HotKey{keyK, control}.toJson())},
                           {"presetHotKey", QString::fromUtf8(HotKey{35, control}.toJson())},
                           {"settingsHotKey", QString::fromUtf8(HotKey{43, command}.toJson())},
                           {"switcherHotKey", QString()}};
        Shell shell(stored);
        shell.setup();
        shell.registrar.press(keyK, control);
        shell.registrar.press(35, control);
        shell.registrar.press(43, command);
        shell.registrar.press(keyTab, option | command); // cleared by the user
        QCOMPARE(shell.ran, (std::map<QString, int>{{"name", 1}, {"preset", 1}, {"settings", 1}}));
        QCOMPARE(shell.menu[HotKeyAction::Switcher], std::nullopt);
    }

    void changingASettingReappliesEveryKey() {
        Shell shell;
        shell.setup();
        shell.settings.setBookmarkHotKey(HotKey{keyK, control | shift});
        QCOMPARE(shell.registration(HotKeyAction::Bookmark),
                 (Registration{{keyK, control | shift}}));
        QCOMPARE(shell.menu[HotKeyAction::Bookmark], (HotKey{keyK, control | shift}));
        shell.registrar.press(keyB, option | command); // the old key is released
        QVERIFY(shell.ran.empty());
        shell.registrar.press(keyK, control | shift);
        QCOMPARE(shell.ran["bookmark"], 1);

        // The freed combination can go to another action at once.
        shell.settings.setNameHotKey(HotKey{keyB, option | command});
        shell.registrar.press(keyB, option | command);
        QCOMPARE(shell.ran["name"], 1);

        shell.settings.setSwitcherHotKey(std::nullopt);
        QCOMPARE(shell.registration(HotKeyAction::Switcher), std::nullopt);
        QCOMPARE(shell.menu[HotKeyAction::Switcher], std::nullopt);
        shell.registrar.press(keyTab, option | command);
        QCOMPARE(shell.ran.count("switcher"), 0u);
    }

    // A key held by another program does nothing, but its menu item still shows it.
    void keyHeldElsewhereStaysOnTheMenu() {
        Shell shell;
        shell.registrar.setTakenByOthers(keyB, option | command);
        shell.setup();
        QCOMPARE(shell.registration(HotKeyAction::Bookmark), std::nullopt);
        QCOMPARE(shell.menu[HotKeyAction::Bookmark], (HotKey{keyB, option | command}));
    }

    // A key code without a name cannot be written on the menu: the item shows no shortcut.
    void keyWithoutANameIsNotMirrored() {
        Shell shell({{"presetHotKey", QString::fromUtf8(HotKey{999, command}.toJson())}});
        shell.setup();
        QCOMPARE(shell.menu[HotKeyAction::Preset], std::nullopt);
        shell.settings.setPresetHotKey(HotKey{0, command});
        QCOMPARE(shell.menu[HotKeyAction::Preset], (HotKey{0, command}));
    }

    void switcherKeyAdvancesAnOpenSwitcher() {
        Shell shell;
        shell.setup();
        shell.registrar.press(keyTab, option | command);
        QCOMPARE(shell.ran["switcher"], 1); // no switcher: open it

        bool panelOpen = true;
        int advanced = 0;
        shell.bindings->setAdvanceOpenSwitcher([&] {
            if (panelOpen)
                ++advanced;
            return panelOpen;
        });
        shell.registrar.press(keyTab, option | command);
        shell.registrar.press(keyTab, option | command);
        QCOMPARE(advanced, 2);
        QCOMPARE(shell.ran["switcher"], 1);
        panelOpen = false;
        shell.registrar.press(keyTab, option | command);
        QCOMPARE(shell.ran["switcher"], 2);
    }

    // The fake keeps the contract of the X11 registrar, which these tests rely on.
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

    void managerIdsAndUnknownPresses() {
        FakeHotKeyRegistrar registrar;
        HotKeyManager manager(registrar);
        int first = 0;
        QCOMPARE(manager.addHandler([&] { ++first; }), 1u);
        QCOMPARE(manager.addHandler({}), 2u);
        manager.set(HotKey{keyK, control}, 1);
        manager.set(HotKey{keyB, control}, 2);
        registrar.registerHotKey(65535, 43, control); // somebody's trial: no handler
        registrar.press(43, control);
        registrar.press(keyB, control); // an id without an action
        registrar.press(keyK, control);
        QCOMPARE(first, 1);
        manager.set(std::nullopt, 1);
        QCOMPARE(registrar.registration(1), std::nullopt);
        registrar.press(keyK, control);
        QCOMPARE(first, 1);
    }

    void bindingsGoneStopListeningToTheSettings() {
        Shell shell;
        shell.setup();
        shell.bindings.reset();
        shell.settings.setNameHotKey(HotKey{keyK, control}); // must not reach the bindings
        QVERIFY(!shell.settings.onHotKeysChanged);
    }
};

QTEST_GUILESS_MAIN(HotKeyBindingsTest)
#include "HotKeyBindingsTest.moc"
