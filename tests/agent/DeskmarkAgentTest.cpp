// The program as a user runs it: started in a private X session with a panel that
// hosts StatusNotifierItems, switched between desktops with wmctrl, started twice.

#include "AgentSession.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

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
        // Each failure is one line, logged once.
        const QList<QByteArray> lines = agent.standardError().split('\n');
        for (const char* expected :
             {"Deskmark: projects.json のデコードに失敗（空で開始）",
              "Deskmark: settings.json のデコードに失敗（既定値で開始）",
              "Deskmark: 読み込めなかった settings.json を settings.json.broken に退避"})
            QVERIFY2(lines.count(QByteArray(expected)) == 1, expected);
    }
};

QTEST_GUILESS_MAIN(DeskmarkAgentTest)
#include "DeskmarkAgentTest.moc"
