// The program as a user runs it: started in a private X session with a panel that
// hosts StatusNotifierItems, switched between desktops with wmctrl, started twice.

#include "AgentSession.h"

#include <QDBusConnection>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>

namespace {
bool wmctrl(const QStringList& arguments) {
    return QProcess::execute(QStringLiteral("wmctrl"), arguments) == 0;
}

bool xdotool(const QStringList& arguments) {
    return QProcess::execute(QStringLiteral("xdotool"), arguments) == 0;
}

// The 0-based number of the current desktop, as `wmctrl -d` marks it with '*'.
int currentDesktop() {
    QProcess process;
    process.start(QStringLiteral("wmctrl"), {QStringLiteral("-d")});
    process.waitForFinished();
    for (const QByteArray& line : process.readAllStandardOutput().split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() > 1 && fields[1] == "*")
            return fields[0].toInt();
    }
    return -1;
}

bool switcherShown() {
    return xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                    QStringLiteral("--name"), QStringLiteral("^Switch Space$")});
}
// A desktop notification service on the session bus that keeps what it is asked to show.
class NotificationService : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    QStringList summaries;

public Q_SLOTS:
    uint Notify(const QString&, uint, const QString&, const QString& summary, const QString&,
                const QStringList&, const QVariantMap&, int) {
        summaries << summary;
        return uint(summaries.size());
    }
};
} // namespace

class DeskmarkAgentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(wmctrl({"-s", "0"})); }

    void firstStartMigratesNamesAndFollowsDesktops() {
        AgentSession agent(QStringLiteral(DESKMARK_PROGRAM));
        agent.writeDataFile(QStringLiteral("names.json"),
                            R"({"desktop-1":{"name":" Alpha "},"desktop-2":{"name":"Beta"},)"
                            R"("desktop-4":{"name":"Alpha"}})");
        QVERIFY2(agent.start(), agent.standardError().constData());
        QCOMPARE(agent.label(), QStringLiteral(" Alpha "));

        // Every legacy entry became a project of its own, its name as it stood; the
        // legacy file was kept as a backup.
        QFile projectsFile(agent.dataFolder() + QStringLiteral("/projects.json"));
        QVERIFY(projectsFile.open(QIODevice::ReadOnly));
        const QJsonObject projects = QJsonDocument::fromJson(projectsFile.readAll()).object();
        QCOMPARE(projects.value(QStringLiteral("projects")).toArray().size(), 3);
        const QJsonObject assignments = projects.value(QStringLiteral("assignments")).toObject();
        QCOMPARE(assignments.size(), 3);
        QVERIFY(assignments.value(QStringLiteral("desktop-1")) !=
                assignments.value(QStringLiteral("desktop-4")));
        QVERIFY(QFile::exists(agent.dataFolder() + QStringLiteral("/names.json.bak")));

        // Each desktop switch retitles the item; an unnamed desktop shows the bare icon.
        QVERIFY(wmctrl({"-s", "1"}));
        QVERIFY(agent.waitForLabel([](const QString& label) { return label == "Beta"; }));
        QVERIFY(wmctrl({"-s", "2"}));
        QVERIFY(agent.waitForLabel([](const QString& label) { return label.isEmpty(); }));
        QVERIFY(wmctrl({"-s", "3"}));
        QVERIFY(agent.waitForLabel([](const QString& label) { return label == "Alpha"; }));
        QVERIFY(wmctrl({"-s", "0"}));
    }

    // The switcher, used as a user does: the hot key, a few letters, Return.
    void switcherFiltersAndSwitches() {
        AgentSession agent(QStringLiteral(DESKMARK_PROGRAM));
        agent.writeDataFile(QStringLiteral("names.json"),
                            R"({"desktop-1":{"name":"Mail"},"desktop-2":{"name":"Docs"},)"
                            R"("desktop-3":{"name":"dev-server"}})");
        QVERIFY2(agent.start(), agent.standardError().constData());
        QTRY_COMPARE(agent.label(), QStringLiteral("Mail"));

        QVERIFY(xdotool({"key", "alt+super+Tab"}));
        QTRY_VERIFY(switcherShown());
        QVERIFY(xdotool({"type", "--delay", "30", "DEV-S"}));
        QVERIFY(xdotool({"key", "Return"}));
        QTRY_COMPARE(currentDesktop(), 2);
        QVERIFY(agent.waitForLabel([](const QString& label) { return label == "dev-server"; }));
        QTRY_VERIFY(!switcherShown());

        // Opened again, it offers the desktop one came from.
        QVERIFY(xdotool({"key", "alt+super+Tab"}));
        QTRY_VERIFY(switcherShown());
        QVERIFY(xdotool({"key", "Return"}));
        QTRY_COMPARE(currentDesktop(), 0);

        // Escape with an empty filter closes without switching.
        QVERIFY(xdotool({"key", "alt+super+Tab"}));
        QTRY_VERIFY(switcherShown());
        QVERIFY(xdotool({"key", "Escape"}));
        QTRY_VERIFY(!switcherShown());
        QTest::qWait(300);
        QCOMPARE(currentDesktop(), 0);
    }

    // The command line as a window manager's key bindings use it: each call reaches the
    // running agent over the session bus and ends; none takes the instance lock.
    void commandLineDrivesTheRunningAgent() {
        AgentSession agent(QStringLiteral(DESKMARK_PROGRAM));
        agent.writeDataFile(QStringLiteral("names.json"),
                            R"({"desktop-1":{"name":"Mail"},"desktop-2":{"name":"Docs"},)"
                            R"("desktop-3":{"name":"dev-server"}})");
        const auto run = [&agent](const QStringList& arguments, int status,
                                  const QByteArray& message = {}) {
            QProcess* command = agent.runSecondCopy(arguments);
            const QByteArray error = command->readAllStandardError();
            return command->exitStatus() == QProcess::NormalExit &&
                   command->exitCode() == status && error == message;
        };
        QVERIFY(run({"switcher"}, 1, "Deskmark is not running.\n"));
        QVERIFY(run({"switch", "--bogus"}, 2,
                    "deskmark: unknown option '--bogus'\n"
                    "Try 'deskmark --help' for more information.\n"));
        QVERIFY(!QFile::exists(agent.dataFolder() + QStringLiteral("/.instance.lock")));
        // Help and version need neither a display nor a bus.
        QProcess bare;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("DISPLAY"));
        environment.remove(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
        bare.setProcessEnvironment(environment);
        bare.start(QStringLiteral(DESKMARK_PROGRAM), {QStringLiteral("--version")});
        QVERIFY(bare.waitForFinished(5000));
        QCOMPARE(bare.readAllStandardOutput(), QByteArray("Deskmark " DESKMARK_VERSION "\n"));
        bare.start(QStringLiteral(DESKMARK_PROGRAM), {QStringLiteral("--help")});
        QVERIFY(bare.waitForFinished(5000));
        QCOMPARE(bare.exitCode(), 0);
        QVERIFY(bare.readAllStandardOutput().contains("switch NAME"));

        QVERIFY2(agent.start(), agent.standardError().constData());
        QTRY_COMPARE(agent.label(), QStringLiteral("Mail"));
        QVERIFY(run({"switch", "DEV-SERVER"}, 0));
        QTRY_COMPARE(currentDesktop(), 2);
        QVERIFY(agent.waitForLabel([](const QString& label) { return label == "dev-server"; }));
        QVERIFY(run({"switch", "dev"}, 1, "No Space has a project called \"dev\".\n"));

        // The switcher opens on the desktop one came from; asked again, it moves on by one.
        QVERIFY(run({"switcher"}, 0));
        QTRY_VERIFY(switcherShown());
        QVERIFY(run({"switcher"}, 0));
        QTest::qWait(200);
        QVERIFY(xdotool({"key", "Return"}));
        QTRY_COMPARE(currentDesktop(), 1);
        QTRY_VERIFY(!switcherShown());
        QVERIFY(agent.isRunning());
        QVERIFY(wmctrl({"-s", "0"}));
    }

    void secondCopyReportsAndLeavesTheFirstRunning() {
        AgentSession agent(QStringLiteral(DESKMARK_PROGRAM));
        QVERIFY2(agent.start(), agent.standardError().constData());
        QProcess* second = agent.runSecondCopy();
        QCOMPARE(second->exitStatus(), QProcess::NormalExit);
        QCOMPARE(second->exitCode(), 0);
        QCOMPARE(second->readAllStandardError(), QByteArray("Deskmark is already running.\n"));
        QTest::qWait(200);
        QVERIFY(agent.isRunning());
        QCOMPARE(agent.label(), QString());
    }

    void undecodableFilesAreReportedOnceAndSetAsideBeforeTheFirstSave() {
        AgentSession agent(QStringLiteral(DESKMARK_PROGRAM));
        const QByteArray damaged = R"({"version":1,"projects":[{"id":)";
        agent.writeDataFile(QStringLiteral("projects.json"), damaged);
        // What a save cut short by a kill left behind.
        agent.writeDataFile(QStringLiteral("projects.json.Ab12Cd"), "{\"version\":1,");
        const QString settingsPath =
            agent.configFolder() + QStringLiteral("/Deskmark/settings.json");
        QVERIFY(QDir().mkpath(QFileInfo(settingsPath).path()));
        QFile settings(settingsPath);
        QVERIFY(settings.open(QIODevice::WriteOnly) && settings.write("{\"appLanguage\":") > 0);
        settings.close();
        QVERIFY2(agent.start(), agent.standardError().constData());
        QCOMPARE(agent.label(), QString());
        // Nothing is saved yet, so nothing is set aside and the damaged file is untouched.
        QFile file(agent.dataFolder() + QStringLiteral("/projects.json"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), damaged);
        // The settings are written at start, after their damaged file has been set aside.
        QVERIFY(QFile::exists(settingsPath + QStringLiteral(".broken")));
        QVERIFY(!QFile::exists(agent.dataFolder() + QStringLiteral("/projects.json.Ab12Cd")));
        // Each failure is one line, logged once.
        const QList<QByteArray> lines = agent.standardError().split('\n');
        for (const char* expected :
             {"Deskmark: projects.json のデコードに失敗（空で開始）",
              "Deskmark: 中断された保存の一時ファイル projects.json.Ab12Cd を削除",
              "Deskmark: settings.json のデコードに失敗（既定値で開始）",
              "Deskmark: 読み込めなかった settings.json を settings.json.broken に退避"})
            QVERIFY2(lines.count(QByteArray(expected)) == 1, expected);
    }

    // A folder where settings.json should be: every save of the settings fails for the
    // whole run. The user is told once, by a desktop notification, and the log has one
    // line.
    void aFileThatCannotBeSavedIsReportedOnce() {
        NotificationService service;
        QDBusConnection bus = QDBusConnection::sessionBus();
        QVERIFY(bus.registerService(QStringLiteral("org.freedesktop.Notifications")));
        QVERIFY(bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), &service,
                                   QDBusConnection::ExportAllSlots));
        AgentSession agent(QStringLiteral(DESKMARK_PROGRAM));
        QVERIFY(QDir().mkpath(agent.configFolder() + QStringLiteral("/Deskmark/settings.json")));
        QVERIFY2(agent.start(), agent.standardError().constData());
        QTRY_COMPARE(service.summaries, QStringList{QStringLiteral("Changes cannot be saved")});
        QTest::qWait(300);
        QCOMPARE(service.summaries.size(), 1);
        QCOMPARE(agent.standardError().count("Deskmark: settings.json の保存に失敗"), 1);
        bus.unregisterObject(QStringLiteral("/org/freedesktop/Notifications"));
        bus.unregisterService(QStringLiteral("org.freedesktop.Notifications"));
    }

    // Monitors come and go and the desktop count changes, many times over, while the
    // program runs: in the end every monitor has its one label, in its place.
    void labelsFollowMonitorAndDesktopChurn() {
        AgentSession agent(QStringLiteral(DESKMARK_PROGRAM));
        agent.writeDataFile(QStringLiteral("names.json"),
                            R"({"desktop-1":"One","desktop-2":"Two","desktop-3":"Three"})");
        QVERIFY2(agent.start(), agent.standardError().constData());
        QTRY_COMPARE(labelWindows().size(), 2);
        const int cycles = qEnvironmentVariableIntValue("CHURN_CYCLES") > 0
                               ? qEnvironmentVariableIntValue("CHURN_CYCLES")
                               : 15;
        for (int cycle = 0; cycle < cycles; ++cycle) {
            QVERIFY(xrandr({"--delmonitor", "RIGHT"}));
            QVERIFY(wmctrl({"-n", "3"}));
            QTest::qWait(cycle % 3 * 40); // the program sees some states, misses others
            QVERIFY(xrandr({"--setmonitor", "RIGHT", "1280/338x800/211+1280+0", "none"}));
            QVERIFY(wmctrl({"-n", "4"}));
            QTest::qWait(cycle % 2 * 40);
        }
        // The bottom centre of each monitor, 12 pixels up from its bottom edge.
        QTRY_COMPARE_WITH_TIMEOUT(labelWindows().size(), 2, 10000);
        QTRY_VERIFY_WITH_TIMEOUT(labelsAtBottomCentres(labelWindows()), 10000);
        QVERIFY(agent.isRunning());
        QCOMPARE(agent.label(), QStringLiteral("One"));
    }

private:
    static bool xrandr(const QStringList& arguments) {
        return QProcess::execute(QStringLiteral("xrandr"), arguments) == 0;
    }

    // The program's corner labels: mapped override-redirect windows of the root.
    static QList<QRect> labelWindows() {
        QList<QRect> found;
        xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
        xcb_query_tree_reply_t* tree =
            xcb_query_tree_reply(connection, xcb_query_tree(connection, root), nullptr);
        const xcb_window_t* children = tree ? xcb_query_tree_children(tree) : nullptr;
        for (int i = 0; tree && i < xcb_query_tree_children_length(tree); ++i) {
            auto* attributes = xcb_get_window_attributes_reply(
                connection, xcb_get_window_attributes(connection, children[i]), nullptr);
            auto* geometry = xcb_get_geometry_reply(
                connection, xcb_get_geometry(connection, children[i]), nullptr);
            if (attributes && geometry && attributes->override_redirect &&
                attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                isDeskmarks(connection, children[i]))
                found << QRect(geometry->x, geometry->y, geometry->width, geometry->height);
            std::free(attributes);
            std::free(geometry);
        }
        std::free(tree);
        xcb_disconnect(connection);
        return found;
    }

    static bool isDeskmarks(xcb_connection_t* connection, xcb_window_t window) {
        auto* reply = xcb_get_property_reply(
            connection,
            xcb_get_property(connection, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 64),
            nullptr);
        const bool ours =
            reply && QByteArray(static_cast<const char*>(xcb_get_property_value(reply)),
                                xcb_get_property_value_length(reply))
                         .contains("Deskmark");
        std::free(reply);
        return ours;
    }

    static bool labelsAtBottomCentres(const QList<QRect>& labels) {
        QList<int> centres;
        for (const QRect& label : labels) {
            if (std::abs(label.bottom() + 1 + 12 - 800) > 1)
                return false;
            centres << label.center().x();
        }
        std::sort(centres.begin(), centres.end());
        return centres.size() == 2 && std::abs(centres[0] - 640) <= 1 &&
               std::abs(centres[1] - 1920) <= 1;
    }
};

QTEST_GUILESS_MAIN(DeskmarkAgentTest)
#include "DeskmarkAgentTest.moc"
