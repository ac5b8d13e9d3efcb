// The program in an i3 session (tests/x11/i3session.sh): two outputs with workspaces of
// their own, a project that spans both switched to from the switcher panel, labels on
// both outputs, and i3 killed and started again while the program runs.

#include "AgentSession.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

#include <csignal>

namespace {

QByteArray run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput();
}

bool i3msg(const QString& command) {
    return QProcess::execute(QStringLiteral("i3-msg"), {QStringLiteral("-q"), command}) == 0;
}

// Workspace name → [visible, focused], as i3 reports it.
QHash<QString, QPair<bool, bool>> workspaces() {
    QHash<QString, QPair<bool, bool>> found;
    const QJsonArray list =
        QJsonDocument::fromJson(run("i3-msg", {"-t", "get_workspaces"})).array();
    for (const QJsonValue& value : list) {
        const QJsonObject workspace = value.toObject();
        found.insert(workspace["name"].toString(),
                     {workspace["visible"].toBool(), workspace["focused"].toBool()});
    }
    return found;
}

bool visible(const QString& workspace) { return workspaces().value(workspace).first; }
bool focused(const QString& workspace) { return workspaces().value(workspace).second; }

// Four workspaces kept alive by an empty container each; i3's configuration puts the
// first two on LEFT and the others on RIGHT. LEFT ends on "2:code", RIGHT on "4:notes".
bool makeWorkspaces() {
    return i3msg("workspace 1:mail; open; workspace 2:code; open; "
                 "workspace 3:mail-log; open; workspace 4:notes; open");
}

// The program's visible windows of class Deskmark: the corner labels and, while open,
// the switcher panel.
QList<QRect> deskmarkWindows() {
    QList<QRect> found;
    const QList<QByteArray> ids =
        run("xdotool", {"search", "--onlyvisible", "--class", "Deskmark"}).split('\n');
    for (const QByteArray& id : ids) {
        if (id.isEmpty())
            continue;
        QHash<QString, int> geometry;
        for (const QByteArray& line :
             run("xdotool", {"getwindowgeometry", "--shell", QString::fromLatin1(id)}).split('\n')) {
            const QList<QByteArray> pair = line.split('=');
            if (pair.size() == 2)
                geometry.insert(QString::fromLatin1(pair[0]), pair[1].toInt());
        }
        found << QRect(geometry["X"], geometry["Y"], geometry["WIDTH"], geometry["HEIGHT"]);
    }
    return found;
}

// One label on each output.
bool labelsOnBothOutputs() {
    int left = 0;
    int right = 0;
    for (const QRect& window : deskmarkWindows())
        ++(window.center().x() < 1280 ? left : right);
    return left == 1 && right == 1;
}

bool switcherShown() {
    return QProcess::execute("xdotool", {"search", "--onlyvisible", "--name", "^Switch Space$"}) == 0;
}

void screenshot(const QString& name) {
    QProcess::execute("import", {"-window", "root", QDir::current().filePath(name)});
}

// i3 names its socket after its process id.
qint64 i3Pid() {
    const QByteArray path = run("i3", {"--get-socketpath"}).trimmed();
    return path.mid(path.lastIndexOf('.') + 1).toLongLong();
}

const QByteArray kProjects =
    R"({"version":1,"projects":[)"
    R"({"id":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D01","name":"mail"},)"
    R"({"id":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D02","name":"code"},)"
    R"({"id":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D03","name":"notes"}],)"
    R"("assignments":{"workspace:1:mail":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D01",)"
    R"("workspace:3:mail-log":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D01",)"
    R"("workspace:2:code":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D02",)"
    R"("workspace:4:notes":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D03"}})";

} // namespace

class I3AgentTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void diagnoseNamesTheBackendAndBothOutputs() {
        QVERIFY(makeWorkspaces());
        const QJsonObject report =
            QJsonDocument::fromJson(run(DESKMARK_PROGRAM, {"--diagnose"})).object();
        QCOMPARE(report["backend"].toString(), QStringLiteral("i3"));
        QCOMPARE(report["displays"].toArray().size(), 2);
    }

    void projectsSwitchOverBothOutputsAndSurviveRestarts() {
        QVERIFY(makeWorkspaces());
        AgentSession agent(QStringLiteral(DESKMARK_PROGRAM));
        agent.writeDataFile(QStringLiteral("projects.json"), kProjects);
        QVERIFY2(agent.start(), agent.standardError().constData());
        // The title follows the first output (the panel item's screen is not known).
        QTRY_COMPARE(agent.label(), QStringLiteral("code"));
        QTRY_VERIFY(labelsOnBothOutputs());

        // The switcher, as a user works it: the hot key, a few letters, Return. The
        // first "mail" Space is LEFT's; RIGHT follows with its own mail Space, and the
        // focus ends on LEFT.
        QVERIFY(QProcess::execute("xdotool", {"key", "alt+super+Tab"}) == 0);
        QTRY_VERIFY(switcherShown());
        QVERIFY(QProcess::execute("xdotool", {"type", "--delay", "30", "mail"}) == 0);
        QVERIFY(QProcess::execute("xdotool", {"key", "Return"}) == 0);
        QTRY_VERIFY(visible("1:mail") && visible("3:mail-log"));
        QTRY_VERIFY(focused("1:mail"));
        QTRY_COMPARE(agent.label(), QStringLiteral("mail"));
        QTRY_VERIFY(!switcherShown());
        QTRY_VERIFY(labelsOnBothOutputs());
        screenshot(QStringLiteral("i3-mail-on-both-outputs.png"));

        // i3 killed and started afresh (under another socket): the program finds it,
        // logs the loss once and follows the new i3.
        const qint64 pid = i3Pid();
        QVERIFY(pid > 0);
        QCOMPARE(::kill(pid_t(pid), SIGKILL), 0);
        QVERIFY(QProcess::startDetached("i3", {"-c", qEnvironmentVariable("DESKMARK_I3_CONFIG")}));
        QTRY_VERIFY_WITH_TIMEOUT(i3Pid() > 0 && i3Pid() != pid, 10000);
        QTRY_VERIFY_WITH_TIMEOUT(i3msg("nop"), 10000);
        QVERIFY(makeWorkspaces());
        QTRY_COMPARE_WITH_TIMEOUT(agent.label(), QStringLiteral("code"), 10000);
        QVERIFY(i3msg("workspace 1:mail"));
        QTRY_COMPARE(agent.label(), QStringLiteral("mail"));
        QVERIFY(i3msg("workspace 4:notes"));
        QVERIFY(i3msg("workspace 2:code"));
        QTRY_COMPARE(agent.label(), QStringLiteral("code"));
        QTRY_VERIFY(labelsOnBothOutputs());
        screenshot(QStringLiteral("i3-after-restart.png"));

        const QString log = QString::fromUtf8(agent.standardError());
        QCOMPARE(log.count(QStringLiteral("i3 との IPC 接続が切れた")), 1);
        QVERIFY(agent.isRunning());
    }
};

QTEST_GUILESS_MAIN(I3AgentTest)
#include "I3AgentTest.moc"
