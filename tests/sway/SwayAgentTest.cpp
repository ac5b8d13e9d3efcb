#include "AgentSession.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRect>
#include <QTest>

namespace {

QByteArray run(const QString& program, const QStringList& arguments, int* status = nullptr) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(10000);
    if (status)
        *status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return process.readAllStandardOutput();
}

bool swayCommand(const QString& command) {
    int status = 0;
    run(QStringLiteral("swaymsg"), {command}, &status);
    return status == 0;
}

QRect rectOf(const QJsonObject& node) {
    const QJsonObject rect = node.value(QLatin1String("rect")).toObject();
    return QRect(rect.value(QLatin1String("x")).toInt(), rect.value(QLatin1String("y")).toInt(),
                 rect.value(QLatin1String("width")).toInt(),
                 rect.value(QLatin1String("height")).toInt());
}

// Every window of the tree whose title starts with prefix, with the output it is on.
struct Window {
    QString title;
    QString output;
    QRect rect;
    bool floating = false;
    bool sticky = false;
};
void collect(const QJsonObject& node, const QString& prefix, QString output, QList<Window>& found) {
    if (node.value(QLatin1String("type")).toString() == QLatin1String("output"))
        output = node.value(QLatin1String("name")).toString();
    const QString name = node.value(QLatin1String("name")).toString();
    const QString type = node.value(QLatin1String("type")).toString();
    if ((type == QLatin1String("con") || type == QLatin1String("floating_con")) &&
        name.startsWith(prefix))
        found << Window{name, output, rectOf(node), type == QLatin1String("floating_con"),
                        node.value(QLatin1String("sticky")).toBool()};
    for (const char* children : {"nodes", "floating_nodes"}) {
        for (const QJsonValue child : node.value(QLatin1String(children)).toArray())
            collect(child.toObject(), prefix, output, found);
    }
}
QList<Window> windows(const QString& prefix) {
    QList<Window> found;
    collect(
        QJsonDocument::fromJson(run(QStringLiteral("swaymsg"), {"-r", "-t", "get_tree"})).object(),
        prefix, QString(), found);
    return found;
}

QString visibleWorkspace(const QString& output) {
    const QJsonArray workspaces =
        QJsonDocument::fromJson(run(QStringLiteral("swaymsg"), {"-r", "-t", "get_workspaces"}))
            .array();
    for (const QJsonValue workspace : workspaces) {
        const QJsonObject object = workspace.toObject();
        if (object.value(QLatin1String("output")).toString() == output &&
            object.value(QLatin1String("visible")).toBool())
            return object.value(QLatin1String("name")).toString();
    }
    return {};
}

const QString kLabelPrefix = QStringLiteral("deskmark-label:");

// Every label floats, sticky, 12 px below the top of its output, in its right half and
// ending before the margin. (sway may make the window's box larger than the label, up to
// its smallest floating size, 75 x 50; the label is drawn at the box's top-left corner.)
bool labelsInTheirCorners() {
    for (const Window& label : windows(kLabelPrefix)) {
        const int outputLeft = label.output == QLatin1String("HEADLESS-1") ? 0 : 1280;
        if (!label.floating || !label.sticky || label.rect.top() != 12 ||
            label.rect.left() < outputLeft + 640 || label.rect.left() > outputLeft + 1280 - 12 - 20)
            return false;
    }
    return true;
}

} // namespace

// The program in a headless sway with two outputs (tests/sway/swaysession.sh): the
// workspaces over sway's IPC, the labels placed by sway, the panel item, switching, and
// sway going away under it.
class SwayAgentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void diagnoseListsBothOutputsAndTheirWorkspaces() {
        AgentSession agent(QStringLiteral(DESKMARK_PROGRAM));
        QProcess* diagnose = agent.runSecondCopy({QStringLiteral("--diagnose")});
        QCOMPARE(diagnose->exitCode(), 0);
        const QJsonObject report =
            QJsonDocument::fromJson(diagnose->readAllStandardOutput()).object();
        QCOMPARE(report.value(QLatin1String("backend")).toString(), QStringLiteral("sway"));
        const QJsonArray displays = report.value(QLatin1String("displays")).toArray();
        QCOMPARE(displays.size(), 2);
        QStringList seen;
        for (const QJsonValue display : displays) {
            const QJsonObject object = display.toObject();
            const QJsonArray spaces = object.value(QLatin1String("spaces")).toArray();
            QCOMPARE(spaces.size(), 1);
            const QJsonObject screen = object.value(QLatin1String("screen")).toObject();
            seen << QStringLiteral("%1,%2 %3x%4 %5")
                        .arg(screen.value(QLatin1String("x")).toInt())
                        .arg(screen.value(QLatin1String("y")).toInt())
                        .arg(screen.value(QLatin1String("width")).toInt())
                        .arg(screen.value(QLatin1String("height")).toInt())
                        .arg(spaces.first().toObject().value(QLatin1String("uuid")).toString());
        }
        seen.sort();
        QCOMPARE(seen, (QStringList{"0,0 1280x800 workspace:1", "1280,0 1280x800 workspace:2"}));
    }

    void labelsTitleAndSwitchingFollowSway() {
        AgentSession agent(QStringLiteral(DESKMARK_PROGRAM));
        agent.writeDataFile(QStringLiteral("names.json"),
                            R"({"workspace:1":{"name":"Alpha"},"workspace:2":{"name":"Beta"},)"
                            R"("workspace:3":{"name":"Gamma"}})");
        QDir(agent.configFolder()).mkpath(QStringLiteral("Deskmark"));
        QFile settings(agent.configFolder() + QStringLiteral("/Deskmark/settings.json"));
        QVERIFY(settings.open(QIODevice::WriteOnly));
        settings.write(R"({"cornerPositionRaw":"topRight","cornerMargin":12})");
        settings.close();
        QVERIFY2(agent.start(), agent.standardError().constData());
        QVERIFY2(agent.waitForLabel([](const QString& label) { return label == "Alpha"; }),
                 agent.standardError().constData());

        // One label per output, floating and sticky in its top-right corner.
        QTRY_COMPARE_WITH_TIMEOUT(windows(kLabelPrefix).size(), 2, 10000);
        QTRY_VERIFY_WITH_TIMEOUT(labelsInTheirCorners(), 5000);

        // sway keeps a workspace only while it shows or holds a window: one for workspace 1.
        QProcess window;
        window.start(QStringLiteral(FAKE_APP),
                     {QStringLiteral("--window"), QStringLiteral("mail")});
        QTRY_COMPARE_WITH_TIMEOUT(windows(QStringLiteral("mail")).size(), 1, 10000);

        // sway's own workspace changes are followed: the title and the labels. An unnamed
        // workspace has none; a label shown again is placed again.
        QVERIFY(swayCommand(QStringLiteral("workspace 4")));
        QVERIFY(agent.waitForLabel([](const QString& label) { return label.isEmpty(); }));
        QTRY_COMPARE(windows(kLabelPrefix).size(), 1);
        QVERIFY(swayCommand(QStringLiteral("workspace 3")));
        QVERIFY(agent.waitForLabel([](const QString& label) { return label == "Gamma"; }));
        QTRY_COMPARE(windows(kLabelPrefix).size(), 2);
        QTRY_VERIFY(labelsInTheirCorners());

        const QString shot = QStringLiteral(SCREENSHOT_FOLDER "/sway-labels.png");
        QFile::remove(shot);
        int status = 0;
        run(QStringLiteral("grim"), {shot}, &status);
        QCOMPARE(status, 0);

        // Switching asks sway through the same socket.
        QCOMPARE(
            agent.runSecondCopy({QStringLiteral("switch"), QStringLiteral("Alpha")})->exitCode(),
            0);
        QTRY_COMPARE(visibleWorkspace(QStringLiteral("HEADLESS-1")), QStringLiteral("1"));
        QVERIFY(agent.waitForLabel([](const QString& label) { return label == "Alpha"; }));

        window.kill();
        window.waitForFinished();

        // sway goes away: Qt's Wayland plugin ends the program, which must not crash.
        run(QStringLiteral("swaymsg"), {QStringLiteral("exit")}); // no answer: sway is gone
        QTRY_VERIFY_WITH_TIMEOUT(!agent.isRunning(), 10000);
        const QByteArray errors = agent.standardError();
        QVERIFY2(!errors.contains("Sanitizer") && !errors.contains("runtime error"),
                 errors.constData());
        QCOMPARE(agent.exitStatus(), QProcess::NormalExit);
    }
};

QTEST_GUILESS_MAIN(SwayAgentTest)
#include "SwayAgentTest.moc"
