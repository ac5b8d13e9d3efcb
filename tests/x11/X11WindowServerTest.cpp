#include "platform/linux/X11WindowServer.h"
#include "core/spaces/MonitorIdentity.h"
#include "x11/X11TestTools.h"

#include <QGuiApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

// Only to write an output's EDID property, which no command-line tool can create.
#include <xcb/randr.h>
#include <xcb/xcb.h>

#include <cstdlib>

using namespace deskmark;

namespace {

constexpr int kTimeout = 10000;
// The UUID of a monitor named "LEFT" without EDID; stored settings depend on it.
const QString kLeftUUID = QStringLiteral("31F7D540-BF36-556A-AA38-8F81A9F610F5");
const QString kNoWindowManagerLine =
    QStringLiteral("Deskmark: EWMH 対応のウィンドウマネージャが見つからないため Space を読めない"
                   "（_NET_SUPPORTING_WM_CHECK / _NET_NUMBER_OF_DESKTOPS なし）");

// Runs a tool to its end; one that hangs fails the test instead of stalling it.
bool run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(kTimeout)) {
        process.kill();
        process.waitForFinished();
        return false;
    }
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

QVariantList layoutOf(const X11WindowServer& server) {
    return server.managedDisplaySpaces().toList();
}
QString identifierOf(const QVariant& display) {
    return display.toMap().value(QStringLiteral("Display Identifier")).toString();
}
QString currentSpaceOf(const QVariant& display) {
    return display.toMap()
        .value(QStringLiteral("Current Space"))
        .toMap()
        .value(QStringLiteral("uuid"))
        .toString();
}
QStringList currentSpaces(const X11WindowServer& server) {
    QStringList spaces;
    for (const QVariant& display : layoutOf(server))
        spaces << currentSpaceOf(display);
    return spaces;
}
QString screenUUID(const X11WindowServer& server, const QString& name) {
    return server.displayUUIDForScreen(name).value_or(QString());
}

// Sets (or with empty data removes) the EDID property of Xvfb's output "screen", which
// the LEFT monitor uses, the way a display driver publishes it.
void setScreenEdid(const QByteArray& edid) {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    auto* resources = xcb_randr_get_screen_resources_current_reply(
        connection, xcb_randr_get_screen_resources_current(connection, root), nullptr);
    auto* atom =
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, 4, "EDID"), nullptr);
    if (resources && atom && xcb_randr_get_screen_resources_current_outputs_length(resources) > 0) {
        const xcb_randr_output_t output =
            xcb_randr_get_screen_resources_current_outputs(resources)[0];
        if (edid.isEmpty())
            xcb_randr_delete_output_property(connection, output, atom->atom);
        else
            xcb_randr_change_output_property(connection, output, atom->atom, XCB_ATOM_INTEGER, 8,
                                             XCB_PROP_MODE_REPLACE, quint32(edid.size()),
                                             edid.constData());
    }
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    std::free(atom);
    std::free(resources);
    xcb_disconnect(connection);
}

// Points DISPLAY elsewhere while it lives.
class DisplayOverride {
public:
    explicit DisplayOverride(const QByteArray& display) : saved_(qgetenv("DISPLAY")) {
        qputenv("DISPLAY", display);
    }
    ~DisplayOverride() { qputenv("DISPLAY", saved_); }

private:
    QByteArray saved_;
};

// A program started for one test and stopped with it.
class Helper {
public:
    Helper(const QString& program, const QStringList& arguments) {
        process_.start(program, arguments);
    }
    ~Helper() {
        process_.terminate();
        process_.waitForFinished();
    }
    QProcess& process() { return process_; }

private:
    QProcess process_;
};

} // namespace

class X11WindowServerTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(run("wmctrl", {"-s", "0"})); }

    void readsTwoMonitorsAndFourDesktops() {
        X11WindowServer server;
        QTRY_COMPARE_WITH_TIMEOUT(currentSpaces(server), (QStringList{"desktop-1", "desktop-1"}),
                                  kTimeout);
        const QVariantList displays = layoutOf(server);
        QCOMPARE(identifierOf(displays[0]), kLeftUUID);
        QCOMPARE(identifierOf(displays[1]),
                 MonitorIdentity::displayUUIDs({MonitorIdentity("RIGHT", "", {})}).first());
        QVariantList spaces;
        for (qlonglong number = 1; number <= 4; ++number)
            spaces << QVariantMap{{"uuid", QStringLiteral("desktop-%1").arg(number)},
                                  {"ManagedSpaceID", number}};
        for (const QVariant& display : displays)
            QCOMPARE(display.toMap().value("Spaces").toList(), spaces);

        QCOMPARE(server.desktopNames(),
                 (QStringList{"desktop 1", "desktop 2", "desktop 3", "desktop 4"}));

        X11WindowServer again;
        QCOMPARE(again.managedDisplaySpaces(), server.managedDisplaySpaces());
        QCOMPARE(again.mainDisplayUUID(), server.mainDisplayUUID());
    }

    void qtScreensMapToTheirDisplays() {
        X11WindowServer server;
        const QVariantList displays = layoutOf(server);
        QCOMPARE(QGuiApplication::screens().size(), displays.size());
        for (qsizetype i = 0; i < displays.size(); ++i)
            QCOMPARE(screenUUID(server, QGuiApplication::screens()[i]->name()),
                     identifierOf(displays[i]));
        QCOMPARE(server.mainDisplayUUID(),
                 server.displayUUIDForScreen(QGuiApplication::primaryScreen()->name()));
        QCOMPARE(server.mainDisplayUUID(), kLeftUUID);
        // Screens named after their output, as Qt does without RandR monitors.
        QCOMPARE(screenUUID(server, "screen"), kLeftUUID);
        QVERIFY(!server.displayUUIDForScreen("NOWHERE"));
    }

    void followsDesktopChanges() {
        X11WindowServer server;
        QSignalSpy spy(&server, &WindowServer::activeSpaceChanged);
        QVERIFY(run("wmctrl", {"-s", "2"}));
        QVERIFY(spy.wait(kTimeout));
        QTRY_COMPARE_WITH_TIMEOUT(currentSpaces(server), (QStringList{"desktop-3", "desktop-3"}),
                                  kTimeout);

        spy.clear();
        QVERIFY(server.requestDesktop(1));
        QVERIFY(spy.wait(kTimeout));
        QCOMPARE(currentSpaces(server), (QStringList{"desktop-2", "desktop-2"}));
        // Switched by the window manager, not only in this connection's eyes.
        QCOMPARE(currentSpaces(X11WindowServer()), (QStringList{"desktop-2", "desktop-2"}));
        QVERIFY(!server.requestDesktop(4));
        QVERIFY(!server.requestDesktop(-1));

        spy.clear();
        QVERIFY(run("wmctrl", {"-n", "5"}));
        QVERIFY(spy.wait(kTimeout));
        QTRY_COMPARE_WITH_TIMEOUT(layoutOf(server).first().toMap().value("Spaces").toList().size(),
                                  5, kTimeout);
        QVERIFY(run("wmctrl", {"-n", "4"}));
        QVERIFY(run("wmctrl", {"-s", "0"}));
        QTRY_COMPARE_WITH_TIMEOUT(layoutOf(server).first().toMap().value("Spaces").toList().size(),
                                  4, kTimeout);
        QTRY_COMPARE_WITH_TIMEOUT(currentSpaces(server), (QStringList{"desktop-1", "desktop-1"}),
                                  kTimeout);
    }

    void readsRenamedDesktops() {
        X11WindowServer server;
        QSignalSpy spy(&server, &WindowServer::activeSpaceChanged);
        QVERIFY(run("xprop", {"-root", "-format", "_NET_DESKTOP_NAMES", "8u", "-set",
                              "_NET_DESKTOP_NAMES", "メール"}));
        QVERIFY(spy.wait(kTimeout));
        QTRY_COMPARE_WITH_TIMEOUT(server.desktopNames(),
                                  (QStringList{"メール", "desktop 2", "desktop 3", "desktop 4"}),
                                  kTimeout);
        QVERIFY(run("xprop", {"-root", "-format", "_NET_DESKTOP_NAMES", "8u", "-set",
                              "_NET_DESKTOP_NAMES", "desktop 1"}));
    }

    // A monitor added as the primary one becomes the main display; removed, it is gone.
    void monitorsComeAndGo() {
        X11WindowServer server;
        QCOMPARE(layoutOf(server).size(), 2);
        QSignalSpy spy(&server, &WindowServer::activeSpaceChanged);
        QVERIFY(run("xrandr", {"--setmonitor", "*EXTRA", "640/100x480/100+0+0", "none"}));
        auto removeExtra = qScopeGuard([] { run("xrandr", {"--delmonitor", "EXTRA"}); });
        // Known at once, even before this connection has heard of the change.
        const QString extra = screenUUID(server, "EXTRA");
        QVERIFY(!extra.isEmpty());
        QVERIFY(extra != kLeftUUID &&
                extra != layoutOf(server)[1].toMap().value("Display Identifier"));
        QVERIFY(spy.wait(kTimeout));
        QTRY_COMPARE_WITH_TIMEOUT(layoutOf(server).size(), 3, kTimeout);
        QTRY_COMPARE_WITH_TIMEOUT(server.mainDisplayUUID(), extra, kTimeout);
        QStringList identifiers;
        for (const QVariant& display : layoutOf(server))
            identifiers << identifierOf(display);
        QVERIFY(identifiers.contains(extra));
        QTRY_VERIFY_WITH_TIMEOUT(QGuiApplication::screens().size() == 3, kTimeout);
        for (const QScreen* screen : QGuiApplication::screens())
            QVERIFY(identifiers.contains(screenUUID(server, screen->name())));

        spy.clear();
        removeExtra.dismiss();
        QVERIFY(run("xrandr", {"--delmonitor", "EXTRA"}));
        QVERIFY(spy.wait(kTimeout));
        QTRY_COMPARE_WITH_TIMEOUT(layoutOf(server).size(), 2, kTimeout);
        QVERIFY(!server.displayUUIDForScreen("EXTRA"));
        QTRY_COMPARE_WITH_TIMEOUT(server.mainDisplayUUID(), kLeftUUID, kTimeout);
    }

    void monitorWithEdidIsKnownByIt() {
        X11WindowServer server;
        QCOMPARE(screenUUID(server, "LEFT"), kLeftUUID);
        QSignalSpy spy(&server, &WindowServer::activeSpaceChanged);
        const QByteArray panel = edid("DEL", 0x1234, 42);
        setScreenEdid(panel);
        QVERIFY(spy.wait(kTimeout));
        const QString byEdid =
            MonitorIdentity::displayUUIDs({MonitorIdentity("LEFT", "screen", panel)}).first();
        QVERIFY(byEdid != kLeftUUID);
        QTRY_COMPARE_WITH_TIMEOUT(screenUUID(server, "LEFT"), byEdid, kTimeout);
        QCOMPARE(identifierOf(layoutOf(server).first()), byEdid);

        setScreenEdid({});
        QVERIFY(spy.wait(kTimeout));
        QTRY_COMPARE_WITH_TIMEOUT(screenUUID(server, "LEFT"), kLeftUUID, kTimeout);
    }

    void withoutWindowManagerThereIsNoLayout() {
        Helper xvfb("Xvfb", {"-displayfd", "1", "-nolisten", "tcp"});
        QTRY_VERIFY_WITH_TIMEOUT(xvfb.process().canReadLine(), kTimeout);
        DisplayOverride display(":" + xvfb.process().readLine().trimmed());

        X11WindowServer server;
        QTest::ignoreMessage(QtWarningMsg, qPrintable(kNoWindowManagerLine));
        QVERIFY(!server.managedDisplaySpaces().isValid());
        QTest::failOnWarning(QRegularExpression("^Deskmark: "));
        QVERIFY(!server.managedDisplaySpaces().isValid()); // said once only
        QVERIFY(!server.requestDesktop(0));
        QVERIFY(server.desktopNames().isEmpty());
        QVERIFY(server.mainDisplayUUID().has_value()); // the monitor is still known

        // A change that reached this connection while it awaited a reply is announced too.
        QSignalSpy spy(&server, &WindowServer::activeSpaceChanged);
        QCoreApplication::sendPostedEvents(); // nothing else left to do
        QVERIFY(run("xprop", {"-root", "-format", "_NET_CURRENT_DESKTOP", "32c", "-set",
                              "_NET_CURRENT_DESKTOP", "1"}));
        QVERIFY(server.desktopNames().isEmpty());
        QVERIFY(spy.wait(kTimeout));

        // A window manager that starts later is noticed.
        spy.clear();
        Helper openbox("openbox", {"--config-file", "/dev/null"});
        QVERIFY(spy.wait(kTimeout));
        QTRY_VERIFY_WITH_TIMEOUT(server.managedDisplaySpaces().isValid(), kTimeout);
    }

    void withoutDisplayThereIsNoLayout() {
        DisplayOverride display(":4095");
        QTest::ignoreMessage(
            QtWarningMsg, "Deskmark: X ディスプレイ \":4095\" に接続できないため Space を読めない");
        X11WindowServer server;
        QTest::failOnWarning(QRegularExpression("^Deskmark: "));
        QVERIFY(!server.managedDisplaySpaces().isValid());
        QVERIFY(!server.mainDisplayUUID());
        QVERIFY(!server.displayUUIDForScreen("LEFT"));
        QVERIFY(server.desktopNames().isEmpty());
        QVERIFY(!server.requestDesktop(0));
    }
};

QTEST_MAIN(X11WindowServerTest)
#include "X11WindowServerTest.moc"
