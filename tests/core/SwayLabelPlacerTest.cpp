#include "core/overlay/SwayLabelPlacer.h"
#include "core/spaces/I3IpcWindowServer.h"
#include "core/spaces/MonitorIdentity.h"
#include "platform/fake/FakeI3WindowManager.h"
#include "platform/fake/FakeScheduler.h"
#include "platform/fake/FakeWindowManagerCommands.h"

#include <QTest>

using namespace deskmark;
using namespace std::chrono_literals;

namespace {
const QString rules = QStringLiteral(
    R"(for_window [app_id="app.id"] floating enable; )"
    R"(for_window [app_id="app.id" title="^deskmark-label:"] "floating enable, sticky enable, )"
    R"(border none"; no_focus [app_id="app.id" title="^deskmark-label:"])");

QString placement(const QString& title, int x, int y) {
    return QStringLiteral(R"([app_id="app.id" title="^%1$"] floating enable, sticky enable, )"
                          R"(border none, move absolute position %2 %3)")
        .arg(title)
        .arg(x)
        .arg(y);
}
} // namespace

class SwayLabelPlacerTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // Titles are their own patterns; the rules go out once, before the first placement,
    // and again after sway refused them.
    void rulesGoOutBeforeTheFirstPlacement() {
        FakeWindowManagerCommands sway;
        FakeScheduler scheduler;
        SwayLabelPlacer placer(sway, scheduler, QStringLiteral("app.id"));
        const QString left = placer.windowTitle(QStringLiteral("37D8-AB"));
        QCOMPARE(left, QStringLiteral("deskmark-label:37D8-AB"));
        QCOMPARE(placer.windowTitle(QStringLiteral("a.b c/é")),
                 QStringLiteral("deskmark-label:a_2eb_20c_2f_c3_a9"));

        sway.setAnswer([](const QString& command) { return !command.startsWith("for_window"); });
        placer.place(left, QPoint(10, 20));
        QCOMPARE(sway.commands(), (QStringList{rules, placement(left, 10, 20)}));
        sway.setAnswer([](const QString&) { return true; });
        placer.place(left, QPoint(-5, 7));
        placer.place(QStringLiteral("deskmark-label:R"), QPoint(1300, 0));
        QCOMPARE(sway.commands().mid(2),
                 (QStringList{rules, placement(left, -5, 7),
                              placement(QStringLiteral("deskmark-label:R"), 1300, 0)}));
    }

    // A window that sway does not know yet is placed again every 50 ms, for at most 40
    // tries; a newer placement of the same window replaces the one still trying, and
    // other windows' placements go on untouched.
    void unmappedWindowsAreTriedAgain() {
        FakeWindowManagerCommands sway;
        FakeScheduler scheduler;
        SwayLabelPlacer placer(sway, scheduler, QStringLiteral("app.id"));
        QStringList mapped;
        sway.setAnswer([&mapped](const QString& command) {
            for (const QString& title : mapped) {
                if (command.contains(title + QLatin1Char('$')))
                    return true;
            }
            return command.startsWith(QLatin1String("for_window"));
        });
        placer.place(QStringLiteral("deskmark-label:A"), QPoint(1, 1));
        placer.place(QStringLiteral("deskmark-label:B"), QPoint(2, 2));
        scheduler.advance(100ms);
        QCOMPARE(sway.commands().count(placement(QStringLiteral("deskmark-label:A"), 1, 1)), 3);
        placer.place(QStringLiteral("deskmark-label:A"), QPoint(3, 3));
        mapped << QStringLiteral("deskmark-label:A");
        sway.clear();
        scheduler.advance(5s);
        QCOMPARE(sway.commands().count(placement(QStringLiteral("deskmark-label:A"), 1, 1)), 0);
        QCOMPARE(sway.commands().count(placement(QStringLiteral("deskmark-label:A"), 3, 3)), 1);
        // B never appears: 40 tries in all, then nothing more.
        QCOMPARE(sway.commands().count(placement(QStringLiteral("deskmark-label:B"), 2, 2)),
                 SwayLabelPlacer::kMaxTries - 3);
        QCOMPARE(scheduler.pendingCount(), 0);
    }

    // The IPC window server answers each command line in the order they were asked,
    // the workspace requests of switching among them; without a connection the answer
    // is failure.
    void commandsAreAnsweredInOrderOverTheSocket() {
        FakeI3WindowManager wm;
        FakeScheduler scheduler;
        I3IpcWindowServer server(wm, scheduler, QStringLiteral("sway"));
        wm.setOutputs({{"LEFT"}});
        wm.setWorkspaces({{"1", "LEFT", true}, {"2", "LEFT", false}}, "LEFT");
        QList<bool> answers;
        const auto record = [&answers](bool succeeded) { answers << succeeded; };
        server.runCommand(QString::fromUtf8(I3IpcWindowServer::workspaceCommand("2")), record);
        QCOMPARE(answers, (QList<bool>{false}));

        server.start();
        server.runCommand(QStringLiteral("no such command"), record);
        QVERIFY(server.requestSpace(
            MonitorIdentity::displayUUIDs({MonitorIdentity(QStringLiteral("LEFT"), {}, {})})
                .first(),
            1));
        server.runCommand(QString::fromUtf8(I3IpcWindowServer::workspaceCommand("2")), record);
        server.runCommand(QString::fromUtf8(I3IpcWindowServer::workspaceCommand("1")));
        QCOMPARE(answers, (QList<bool>{false, false, true}));
        QCOMPARE(wm.visibleOn(QStringLiteral("LEFT")), QStringLiteral("1"));
    }
};

QTEST_GUILESS_MAIN(SwayLabelPlacerTest)
#include "SwayLabelPlacerTest.moc"
