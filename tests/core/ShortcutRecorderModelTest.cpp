#include "core/app/ShortcutRecorderModel.h"
#include "core/HotKeyTestKeys.h"
#include "core/app/HotKeyBindings.h"
#include "core/app/Language.h"
#include "core/app/NotificationCenter.h"
#include "core/app/WindowManagerKeyBinding.h"
#include "platform/fake/FakeHotKeyRegistrar.h"
#include "platform/fake/MemoryDefaults.h"

#include <QSignalSpy>
#include <QTest>

using namespace deskmark;

namespace {
constexpr quint32 key1 = 18;
constexpr quint32 keyEscape = 53;
constexpr quint32 unnamedScanCode = 200;
constexpr auto superCtrl = Qt::MetaModifier | Qt::ControlModifier;

struct Fixture {
    Fixture() { bindings.setup({}, {}); }

    MemoryDefaults defaults;
    SettingsStore settings{defaults, plainPlatformDefaults()};
    FakeHotKeyRegistrar registrar;
    // The live hot keys, as the application has them while a recorder is open.
    HotKeyManager manager{registrar};
    HotKeyBindings bindings{settings, manager};
    ShortcutRecorderModel name{settings, HotKeyAction::Name, registrar};
    ShortcutRecorderModel bookmark{settings, HotKeyAction::Bookmark, registrar};
};

class LanguageScope {
public:
    explicit LanguageScope(bool japanese) : before_(Language::isJapanese()) {
        Language::setJapanese(japanese);
    }
    ~LanguageScope() { Language::setJapanese(before_); }
    LanguageScope(const LanguageScope&) = delete;
    LanguageScope& operator=(const LanguageScope&) = delete;

private:
    bool before_;
};
} // namespace

class ShortcutRecorderModelTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void textsInBothLanguages_data() {
        QTest::addColumn<bool>("japanese");
        QTest::addColumn<QString>("none");
        QTest::addColumn<QString>("recording");
        QTest::addColumn<QString>("inUse");
        QTest::addColumn<QString>("stopped");
        QTest::newRow("en") << false << "None"
                            << "Type shortcut…"
                            << "Already in use"
                            << "Recording stopped — another app may have captured that key.";
        QTest::newRow("ja")
            << true << "なし"
            << "キーを入力…"
            << "このキーは使用できません（他で使用中）"
            << "記録を中断しました。そのキーは他のアプリに取られている可能性があります。";
    }
    void textsInBothLanguages() {
        QFETCH(bool, japanese);
        QFETCH(QString, none);
        QFETCH(QString, recording);
        QFETCH(QString, inUse);
        QFETCH(QString, stopped);
        const LanguageScope language(japanese);
        Fixture f;
        QCOMPARE(f.name.buttonText(), none);
        QCOMPARE(f.bookmark.buttonText(), QStringLiteral("Alt+Super+B")); // same in both
        f.name.start();
        QCOMPARE(f.name.buttonText(), recording);
        f.registrar.setTakenByOthers(keyK, control | command);
        QVERIFY(f.name.keyPressed(Qt::Key_K, keyK, superCtrl));
        QCOMPARE(f.name.errorText(), inUse);
        f.name.windowDeactivated();
        QCOMPARE(f.name.errorText(), stopped);
        QCOMPARE(f.name.buttonText(), none);
    }

    // Escape, or the bound combination itself (no conflict with itself), ends recording
    // with no beep and no change.
    void escapeOrTheBoundKeyEndsRecordingUnchanged() {
        Fixture f;
        QSignalSpy beeps(&f.bookmark, &ShortcutRecorderModel::beepRequested);
        QSignalSpy recording(&f.bookmark, &ShortcutRecorderModel::recordingChanged);
        f.bookmark.start();
        QVERIFY(f.bookmark.keyPressed(Qt::Key_Escape, keyEscape, Qt::ControlModifier));
        QVERIFY(!f.bookmark.isRecording());
        QCOMPARE(recording.count(), 2);
        QCOMPARE(recording.at(1).at(0).toBool(), false);
        QVERIFY(!f.bookmark.keyPressed(Qt::Key_K, keyK, superCtrl)); // idle: passes

        f.bookmark.start();
        QVERIFY(f.bookmark.keyPressed(Qt::Key_B, keyB, Qt::AltModifier | Qt::MetaModifier));
        QVERIFY(!f.bookmark.isRecording());
        QCOMPARE(f.bookmark.errorText(), QString());
        QCOMPARE(beeps.count(), 0);
        QCOMPARE(f.settings.bookmarkHotKey(), (HotKey{keyB, option | command}));
    }

    void bareKeyBeepsAndKeepsRecording() {
        Fixture f;
        QSignalSpy beeps(&f.name, &ShortcutRecorderModel::beepRequested);
        f.name.start();
        QVERIFY(f.name.keyPressed(Qt::Key_B, keyB, Qt::NoModifier));
        QVERIFY(f.name.keyPressed(Qt::Key_B, keyB, Qt::KeypadModifier)); // not a modifier
        QCOMPARE(beeps.count(), 2);
        QVERIFY(f.name.isRecording());
        QCOMPARE(f.name.errorText(), QString());
        QCOMPARE(f.settings.nameHotKey(), std::nullopt);

        // Holding a modifier on its way to the key is no press of a key yet.
        QVERIFY(f.name.keyPressed(Qt::Key_Control, 37, Qt::ControlModifier));
        QVERIFY(f.name.keyPressed(Qt::Key_Meta, 133, superCtrl));
        QCOMPARE(beeps.count(), 2);
        // A key that cannot be a hot key.
        QVERIFY(f.name.keyPressed(Qt::Key_F20, unnamedScanCode, superCtrl));
        QCOMPARE(beeps.count(), 3);
        QVERIFY(f.name.isRecording());

        // Shift alone is enough; the key is the unshifted one ("1" for "!").
        QVERIFY(f.name.keyPressed(Qt::Key_Exclam, key1, Qt::ShiftModifier));
        QCOMPARE(f.settings.nameHotKey(), (HotKey{key1, shift}));
        QVERIFY(!f.name.isRecording());
    }

    void newKeyIsTriedThenStored() {
        Fixture f;
        f.name.start();
        QVERIFY(f.name.keyPressed(Qt::Key_K, keyK, superCtrl));
        QCOMPARE(f.settings.nameHotKey(), (HotKey{keyK, control | command}));
        QVERIFY(!f.name.isRecording());
        QCOMPARE(f.registrar.registration(ShortcutRecorderModel::trialID), std::nullopt);
        // Stored, and through the settings' callback registered as a live hot key.
        QCOMPARE(f.registrar.registration(f.bindings.token(HotKeyAction::Name)),
                 (FakeHotKeyRegistrar::Combination{keyK, control | command}));
        QCOMPARE(f.name.buttonText(), QStringLiteral("Ctrl+Super+K"));
    }

    void combinationInUseIsRefused() {
        Fixture f;
        QSignalSpy beeps(&f.name, &ShortcutRecorderModel::beepRequested);
        f.registrar.setTakenByOthers(keyK, control | command);
        f.name.start();
        QVERIFY(f.name.keyPressed(Qt::Key_K, keyK, superCtrl)); // another program's
        QVERIFY(f.name.keyPressed(Qt::Key_B, keyB, Qt::AltModifier | Qt::MetaModifier)); // ours
        QCOMPARE(beeps.count(), 2);
        QCOMPARE(f.name.errorText(), QStringLiteral("Already in use"));
        QVERIFY(f.name.isRecording());
        QCOMPARE(f.settings.nameHotKey(), std::nullopt);
        QCOMPARE(f.registrar.registration(ShortcutRecorderModel::trialID), std::nullopt);
        // The bookmark key is still live.
        QCOMPARE(f.registrar.registration(f.bindings.token(HotKeyAction::Bookmark)),
                 (FakeHotKeyRegistrar::Combination{keyB, option | command}));

        // A free combination then clears the error.
        QVERIFY(f.name.keyPressed(Qt::Key_K, keyK, Qt::ControlModifier | Qt::ShiftModifier));
        QCOMPARE(f.name.errorText(), QString());
        QCOMPARE(f.settings.nameHotKey(), (HotKey{keyK, control | shift}));
    }

    void onlyOneRecorderRecords() {
        Fixture f;
        f.name.start();
        f.bookmark.start();
        QVERIFY(!f.name.isRecording());
        QVERIFY(f.bookmark.isRecording());
        NotificationCenter::shared().post(QStringLiteral("Deskmark.SomethingElse"));
        QVERIFY(f.bookmark.isRecording());
        NotificationCenter::shared().post(
            QStringLiteral("Deskmark.ShortcutRecorder.beganRecording"));
        QVERIFY(!f.bookmark.isRecording());
        // A stopped recorder no longer listens: it is not restarted or stopped twice.
        QSignalSpy recording(&f.name, &ShortcutRecorderModel::recordingChanged);
        f.bookmark.start();
        QCOMPARE(recording.count(), 0);
    }

    void losingFocusStopsWithAMessage() {
        Fixture f;
        f.name.windowDeactivated(); // idle: nothing to say
        QCOMPARE(f.name.errorText(), QString());
        f.name.start();
        f.name.windowDeactivated();
        QVERIFY(!f.name.isRecording());
        QVERIFY(f.name.errorText().startsWith(QStringLiteral("Recording stopped")));
        f.name.start(); // a new recording clears the message
        QCOMPARE(f.name.errorText(), QString());
    }

    // Where the window manager owns the keys (sway), a recorded combination is kept
    // without any grab and each recorder shows the line that binds it in sway's config,
    // or the command to bind for an action without keys; elsewhere it shows nothing.
    void windowManagerKeysShowTheirBindingLines() {
        Fixture x11;
        QCOMPARE(x11.bookmark.noteText(), QString());

        Fixture f;
        f.registrar.setBoundByWindowManager(true);
        QCOMPARE(f.bookmark.noteText(),
                 QStringLiteral("Set in sway's config: bindsym Mod1+Mod4+b exec deskmark bookmarks"));
        QCOMPARE(f.name.noteText(),
                 QStringLiteral("To bind a key in sway's config, run: deskmark rename"));
        f.name.start();
        QVERIFY(f.name.keyPressed(Qt::Key_Comma, 43, Qt::ControlModifier | Qt::ShiftModifier));
        QCOMPARE(f.name.errorText(), QString());
        QCOMPARE(f.name.noteText(),
                 QStringLiteral("Set in sway's config: bindsym Ctrl+Shift+comma exec deskmark rename"));
        f.settings.setHotKey(HotKeyAction::Switcher, HotKey{keyTab, option});
        QCOMPARE(WindowManagerKeyBinding::bindsymLine(HotKeyAction::Switcher,
                                                      *f.settings.switcherHotKey()),
                 QStringLiteral("bindsym Mod1+Tab exec deskmark switcher"));
        const LanguageScope japanese(true);
        QCOMPARE(f.bookmark.noteText(),
                 QStringLiteral("sway の設定に書いてください: bindsym Mod1+Mod4+b exec deskmark "
                                "bookmarks"));
        QCOMPARE(WindowManagerKeyBinding::menuShortcut(HotKey{keyTab, option}),
                 QStringLiteral("Alt+Tab（sway の設定）"));
    }

    void clearControlRemovesTheBinding() {
        Fixture f;
        f.bookmark.clearBinding();
        QCOMPARE(f.settings.bookmarkHotKey(), std::nullopt);
        QCOMPARE(f.defaults.value(QStringLiteral("bookmarkHotKey")), QJsonValue(QString()));
        QCOMPARE(f.bookmark.buttonText(), QStringLiteral("None"));
    }
};

QTEST_GUILESS_MAIN(ShortcutRecorderModelTest)
#include "ShortcutRecorderModelTest.moc"
