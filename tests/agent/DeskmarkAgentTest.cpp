// The program as a user runs it: started in a private X session with a panel that
// hosts StatusNotifierItems, switched between desktops with wmctrl, started twice.

#include "AgentSession.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

namespace {
bool wmctrl(const QStringList& arguments) {
    return QProcess::execute(QStringLiteral("wmctrl"), arguments) == 0;
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

    void undecodableProjectsAreSetAsideBeforeTheFirstSave() {
        AgentSession agent(QStringLiteral(DESKMARK_PROGRAM));
        const QByteArray damaged = R"({"version":1,"projects":[{"id":)";
        agent.writeDataFile(QStringLiteral("projects.json"), damaged);
        QVERIFY2(agent.start(), agent.standardError().constData());
        QCOMPARE(agent.label(), QString());
        // Nothing is saved yet, so nothing is set aside and the damaged file is untouched.
        QFile file(agent.dataFolder() + QStringLiteral("/projects.json"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), damaged);
        QVERIFY(agent.standardError().contains("projects.json"));
    }
};

QTEST_GUILESS_MAIN(DeskmarkAgentTest)
#include "DeskmarkAgentTest.moc"
