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

using namespace deskmark;

namespace {
constexpr int timeout = 3000;

// The program's hot keys as the application wires them: settings.json, the X11
// registrar, the manager and the bindings, with every action counted.
struct Shell {
    explicit Shell(const QString& settingsPath) : file(settingsPath) {
        bindings.setup(countingActions(ran),
                       [this](HotKeyAction action, const std::optional<HotKey>& key) {
                           menu.showHotKey(action, key);
                       });
    }

    SettingsFile file;
    SettingsStore settings{file, plainPlatformDefaults()};
    X11HotKeyRegistrar registrar;
    HotKeyManager manager{registrar};
    HotKeyBindings bindings{settings, manager};
    StatusMenu menu;
    std::map<QString, int> ran;
};

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

    // A key read from settings.json fires; cleared keys are stored as such and let go of
    // on the X server.
    void keysFromTheSettingsFileFireUntilCleared() {
        QFile stored(settingsPath_);
        QVERIFY(stored.open(QIODevice::WriteOnly));
        const HotKey name{keyK, control | command};
        stored.write(
            QJsonDocument(QJsonObject{{"nameHotKey", QString::fromUtf8(name.toJson())}}).toJson());
        stored.close();
        Shell shell(settingsPath_);
        pressKeys(QStringLiteral("ctrl+super+k"));
        QTRY_COMPARE_WITH_TIMEOUT(shell.ran["name"], 1, timeout);
        pressKeys(QStringLiteral("alt+super+b")); // the built-in bookmark key
        QTRY_COMPARE_WITH_TIMEOUT(shell.ran["bookmark"], 1, timeout);

        shell.settings.setNameHotKey(std::nullopt);
        shell.settings.setBookmarkHotKey(std::nullopt);
        const QJsonObject written = readSettings(settingsPath_);
        QVERIFY(!written.contains("nameHotKey"));
        QCOMPARE(written.value("bookmarkHotKey"), QJsonValue(QString()));
        OtherXClient other;
        QVERIFY(other.grab(other.keycodeOf(XK_k), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_4));
        QVERIFY(other.grab(other.keycodeOf(XK_b), XCB_MOD_MASK_1 | XCB_MOD_MASK_4));
    }

    void menuItemsShowTheirKeys() {
        Shell shell(settingsPath_);
        QAction* bookmark = shell.menu.bookmarkAction();
        QCOMPARE(bookmark->text(), QStringLiteral("Open Bookmarks…\tAlt+Super+B"));
        QCOMPARE(bookmark->shortcut(), QKeySequence(Qt::ALT | Qt::META | Qt::Key_B));
        QCOMPARE(shell.menu.nameAction()->text(),
                 QStringLiteral("Edit Current Space's Name && Color…"));
        QVERIFY(shell.menu.nameAction()->shortcut().isEmpty());

        shell.settings.setPresetHotKey(HotKey{49, control | shift});
        QCOMPARE(shell.menu.presetAction()->text(),
                 QStringLiteral("Quick-Select Current Space's Color Preset\tCtrl+Shift+Space"));
        shell.settings.setBookmarkHotKey(std::nullopt);
        QCOMPARE(bookmark->text(), QStringLiteral("Open Bookmarks…"));
        QVERIFY(bookmark->shortcut().isEmpty());
    }

    // The menu shows Ctrl+Q for Quit, so the key quits from the open menu.
    void quitKeyWorksInTheOpenMenu() {
        Shell shell(settingsPath_);
        QSignalSpy quit(shell.menu.quitAction(), &QAction::triggered);
        shell.menu.popup(QPoint(100, 100));
        QVERIFY(QTest::qWaitForWindowExposed(&shell.menu));
        QTest::keyClick(&shell.menu, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(quit.count(), 1);
    }

    // The recorder holds the keyboard, so a combination that another client or one of
    // the program's own hot keys holds reaches it, and is refused as in use.
    void recorderRefusesKeysHeldElsewhereAndRecordsAFreeOne() {
        Shell shell(settingsPath_);
        RecorderWindow window(shell, HotKeyAction::Name);
        QVERIFY(QTest::qWaitForWindowActive(&window.window));
        ShortcutRecorderModel& model = window.recorder->model();
        OtherXClient holder;
        QVERIFY(holder.grab(holder.keycodeOf(XK_k), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_4));

        QSignalSpy beeps(&model, &ShortcutRecorderModel::beepRequested);
        QTest::mouseClick(window.button(), Qt::LeftButton);
        QVERIFY(model.isRecording());
        QCOMPARE(window.button()->text(), QStringLiteral("Type shortcut…"));
        pressKeys(QStringLiteral("Tab")); // a bare key, kept by the recorder: no focus move
        QVERIFY(beeps.wait(timeout));
        pressKeys(QStringLiteral("ctrl+super+k"));
        QTRY_COMPARE_WITH_TIMEOUT(model.errorText(), QStringLiteral("Already in use"), timeout);
        QVERIFY(model.isRecording());

        pressKeys(QStringLiteral("alt+super+b")); // the live bookmark key: ours, in use too
        QVERIFY(beeps.wait(timeout));
        QCOMPARE(shell.ran["bookmark"], 0);

        pressKeys(QStringLiteral("ctrl+shift+k"));
        QTRY_VERIFY_WITH_TIMEOUT(!model.isRecording(), timeout);
        QCOMPARE(shell.settings.nameHotKey(), (HotKey{keyK, control | shift}));
        QCOMPARE(window.button()->text(), QStringLiteral("Ctrl+Shift+K"));
        QVERIFY(readSettings(settingsPath_).contains("nameHotKey"));

        // Recording has let go of the keyboard, and the new key is live.
        QTRY_VERIFY_WITH_TIMEOUT(session_.keyboardIsFree(), timeout);
        pressKeys(QStringLiteral("ctrl+shift+k"));
        QTRY_COMPARE_WITH_TIMEOUT(shell.ran["name"], 1, timeout);
    }

    void anotherWindowTakingFocusStopsRecording() {
        Shell shell(settingsPath_);
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
