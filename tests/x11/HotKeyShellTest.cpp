#include "core/HotKeyTestKeys.h"
#include "core/app/HotKeyBindings.h"
#include "platform/linux/SettingsFile.h"
#include "platform/linux/X11HotKeyRegistrar.h"
#include "ui/ShortcutRecorder.h"
#include "ui/StatusMenu.h"
#include "x11/X11TestTools.h"

#include <QApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

#include <X11/keysym.h>

#include <map>

using namespace deskmark;

namespace {
constexpr quint16 numLock = XCB_MOD_MASK_2; // where Xvfb's keymap puts Num_Lock
constexpr int timeout = 3000;
constexpr int silence = 400;

// The program's hot keys as the application wires them: settings.json, the X11
// registrar, the manager and the bindings, with every action counted.
struct Shell {
    explicit Shell(const QString& settingsPath) : file(settingsPath) {}

    void setup() {
        const auto count = [this](const char* name) {
            return [this, name] { ++ran[QString::fromLatin1(name)]; };
        };
        bindings.setup({count("name"), count("preset"), count("settings"), count("bookmark"),
                        count("switcher")},
                       [this](HotKeyAction action, const std::optional<HotKey>& key) {
                           menu.showHotKey(action, key);
                       });
    }
    int runs(const char* name) const {
        const auto it = ran.find(QString::fromLatin1(name));
        return it == ran.end() ? 0 : it->second;
    }

    SettingsFile file;
    SettingsStore settings{file, plainPlatformDefaults()};
    X11HotKeyRegistrar registrar;
    HotKeyManager manager{registrar};
    HotKeyBindings bindings{settings, manager};
    StatusMenu menu;
    std::map<QString, int> ran;
};

void writeSettings(const QString& path, const QJsonObject& values) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QJsonDocument(values).toJson());
}

QJsonObject readSettings(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

// A settings-pane stand-in: a window holding one recorder.
struct RecorderWindow {
    explicit RecorderWindow(Shell& shell, HotKeyAction action)
        : recorder(new ShortcutRecorder(shell.settings, action, shell.registrar, &window)) {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(recorder);
        window.show();
        window.activateWindow();
    }
    QPushButton* button() const { return recorder->findChild<QPushButton*>(); }

    QWidget window;
    ShortcutRecorder* recorder;
};
} // namespace

class HotKeyShellTest : public QObject {
    Q_OBJECT
    // Keeps the display open between tests (an X server resets when its last client goes).
    OtherXClient session_;
    QTemporaryDir folder_;
    QString settingsPath_;

private Q_SLOTS:
    void init() {
        settingsPath_ =
            folder_.filePath(QStringLiteral("settings-%1.json").arg(QTest::currentTestFunction()));
    }

    void keyFromSettingsFileFiresWhateverTheLocks() {
        writeSettings(
            settingsPath_,
            {{"nameHotKey", QString::fromUtf8(HotKey{keyK, control | command}.toJson())}});
        Shell shell(settingsPath_);
        shell.setup();

        pressKeys(QStringLiteral("ctrl+super+k"));
        QTRY_COMPARE_WITH_TIMEOUT(shell.runs("name"), 1, timeout);
        pressKeys(QStringLiteral("alt+super+b")); // the built-in bookmark key
        QTRY_COMPARE_WITH_TIMEOUT(shell.runs("bookmark"), 1, timeout);

        pressKeys(QStringLiteral("Num_Lock"));
        pressKeys(QStringLiteral("Caps_Lock"));
        QCOMPARE(session_.keyboardState() & (numLock | XCB_MOD_MASK_LOCK),
                 numLock | XCB_MOD_MASK_LOCK);
        pressKeys(QStringLiteral("ctrl+super+k"));
        pressKeys(QStringLiteral("alt+super+Tab"));
        const bool nameFired = QTest::qWaitFor([&] { return shell.runs("name") == 2; }, timeout);
        const bool switcherFired =
            QTest::qWaitFor([&] { return shell.runs("switcher") == 1; }, timeout);
        pressKeys(QStringLiteral("Num_Lock"));
        pressKeys(QStringLiteral("Caps_Lock"));
        QVERIFY(nameFired);
        QVERIFY(switcherFired);
        QCOMPARE(session_.keyboardState() & (numLock | XCB_MOD_MASK_LOCK), 0);
    }

    void clearedKeyStopsFiringAndIsReleased() {
        writeSettings(
            settingsPath_,
            {{"nameHotKey", QString::fromUtf8(HotKey{keyK, control | command}.toJson())}});
        Shell shell(settingsPath_);
        shell.setup();
        shell.settings.setNameHotKey(std::nullopt);
        shell.settings.setBookmarkHotKey(std::nullopt);
        const QJsonObject stored = readSettings(settingsPath_);
        QVERIFY(!stored.contains("nameHotKey"));
        QCOMPARE(stored.value("bookmarkHotKey"), QJsonValue(QString()));

        pressKeys(QStringLiteral("ctrl+super+k"));
        pressKeys(QStringLiteral("alt+super+b"));
        QTest::qWait(silence);
        QCOMPARE(shell.runs("name") + shell.runs("bookmark"), 0);
        OtherXClient other;
        QVERIFY(other.grab(other.keycodeOf(XK_k), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_4));
        QVERIFY(other.grab(other.keycodeOf(XK_b), XCB_MOD_MASK_1 | XCB_MOD_MASK_4));
    }

    void menuItemsShowTheirKeys() {
        Shell shell(settingsPath_);
        shell.setup();
        QAction* bookmark = shell.menu.bookmarkAction();
        QCOMPARE(bookmark->text(), QStringLiteral("Open Bookmarks\tAlt+Super+B"));
        QCOMPARE(bookmark->shortcut(), QKeySequence(Qt::ALT | Qt::META | Qt::Key_B));
        QCOMPARE(shell.menu.nameAction()->text(),
                 QStringLiteral("Edit Current Space's Name && Color"));
        QVERIFY(shell.menu.nameAction()->shortcut().isEmpty());

        shell.settings.setPresetHotKey(HotKey{49, control | shift});
        QCOMPARE(shell.menu.presetAction()->text(),
                 QStringLiteral("Quick-Select Current Space's Color Preset\tCtrl+Shift+Space"));
        shell.settings.setBookmarkHotKey(std::nullopt);
        QCOMPARE(bookmark->text(), QStringLiteral("Open Bookmarks"));
        QVERIFY(bookmark->shortcut().isEmpty());
    }

    // The recorder holds the keyboard, so a combination that another client or one of
    // the program's own hot keys holds reaches it, and is refused as in use.
    void recorderRefusesKeysHeldElsewhereAndRecordsAFreeOne() {
        Shell shell(settingsPath_);
        shell.setup();
        RecorderWindow window(shell, HotKeyAction::Name);
        QVERIFY(QTest::qWaitForWindowActive(&window.window));
        ShortcutRecorderModel& model = window.recorder->model();
        OtherXClient holder;
        QVERIFY(holder.grab(holder.keycodeOf(XK_k), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_4));

        QTest::mouseClick(window.button(), Qt::LeftButton);
        QVERIFY(model.isRecording());
        QCOMPARE(window.button()->text(), QStringLiteral("Type shortcut…"));
        pressKeys(QStringLiteral("ctrl+super+k"));
        QTRY_COMPARE_WITH_TIMEOUT(model.errorText(), QStringLiteral("Already in use"), timeout);
        QVERIFY(model.isRecording());

        pressKeys(QStringLiteral("alt+super+b")); // the live bookmark key: ours, in use too
        QSignalSpy beeps(&model, &ShortcutRecorderModel::beepRequested);
        QVERIFY(beeps.wait(timeout));
        QCOMPARE(shell.runs("bookmark"), 0);

        pressKeys(QStringLiteral("ctrl+shift+k"));
        QTRY_VERIFY_WITH_TIMEOUT(!model.isRecording(), timeout);
        QCOMPARE(shell.settings.nameHotKey(), (HotKey{keyK, control | shift}));
        QCOMPARE(window.button()->text(), QStringLiteral("Ctrl+Shift+K"));
        QVERIFY(readSettings(settingsPath_).contains("nameHotKey"));

        // Recording has let go of the keyboard, and the new key is live.
        QTRY_VERIFY_WITH_TIMEOUT(session_.keyboardIsFree(), timeout);
        pressKeys(QStringLiteral("ctrl+shift+k"));
        QTRY_COMPARE_WITH_TIMEOUT(shell.runs("name"), 1, timeout);
    }

    void escapeAndBareKeysWhileRecording() {
        Shell shell(settingsPath_);
        shell.setup();
        RecorderWindow window(shell, HotKeyAction::Bookmark);
        QVERIFY(QTest::qWaitForWindowActive(&window.window));
        ShortcutRecorderModel& model = window.recorder->model();
        QSignalSpy beeps(&model, &ShortcutRecorderModel::beepRequested);
        QTest::mouseClick(window.button(), Qt::LeftButton);
        pressKeys(QStringLiteral("b"));
        QVERIFY(beeps.wait(timeout));
        pressKeys(QStringLiteral("Tab")); // stays with the recorder, no focus move
        QVERIFY(beeps.wait(timeout));
        QVERIFY(model.isRecording());
        pressKeys(QStringLiteral("Escape"));
        QTRY_VERIFY_WITH_TIMEOUT(!model.isRecording(), timeout);
        QCOMPARE(shell.settings.bookmarkHotKey(), (HotKey{11, option | command}));
        QCOMPARE(model.errorText(), QString());
    }

    void anotherWindowTakingFocusStopsRecording() {
        Shell shell(settingsPath_);
        shell.setup();
        RecorderWindow window(shell, HotKeyAction::Name);
        QVERIFY(QTest::qWaitForWindowActive(&window.window));
        ShortcutRecorderModel& model = window.recorder->model();
        QTest::mouseClick(window.button(), Qt::LeftButton);
        QVERIFY(model.isRecording());

        QWidget other;
        other.setWindowTitle(QStringLiteral("Other"));
        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        runTool(QStringLiteral("xdotool"),
                {QStringLiteral("windowactivate"), QString::number(other.winId())});
        QTRY_VERIFY_WITH_TIMEOUT(!model.isRecording(), timeout);
        QCOMPARE(model.errorText(),
                 QStringLiteral("Recording stopped — another app may have captured that key."));
        QCOMPARE(QWidget::keyboardGrabber(), nullptr);
        QTRY_VERIFY_WITH_TIMEOUT(session_.keyboardIsFree(), timeout);
    }

    void twoRecordersNeverRecordTogether() {
        Shell shell(settingsPath_);
        shell.setup();
        RecorderWindow first(shell, HotKeyAction::Name);
        auto* second = new ShortcutRecorder(shell.settings, HotKeyAction::Preset, shell.registrar,
                                            &first.window);
        first.window.layout()->addWidget(second);
        QVERIFY(QTest::qWaitForWindowActive(&first.window));
        QTest::mouseClick(first.button(), Qt::LeftButton);
        QCOMPARE(QWidget::keyboardGrabber(), first.recorder);
        QTest::mouseClick(second->findChild<QPushButton*>(), Qt::LeftButton);
        QVERIFY(!first.recorder->model().isRecording());
        QVERIFY(second->model().isRecording());
        QCOMPARE(QWidget::keyboardGrabber(), second);
        second->model().stop();
        QCOMPARE(QWidget::keyboardGrabber(), nullptr);
    }
};

QTEST_MAIN(HotKeyShellTest)
#include "HotKeyShellTest.moc"
