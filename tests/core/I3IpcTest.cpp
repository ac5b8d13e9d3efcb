// The i3/sway IPC client: the wire format, replies recorded from i3 4.22 and sway 1.8
// turned into displays, what each event makes stale, and the whole client against an
// i3 in memory: switching a project over two outputs, a window manager that restarts,
// outputs that change.

#include "core/model/ProjectStore.h"
#include "core/spaces/I3IpcCodec.h"
#include "core/spaces/I3IpcWindowServer.h"
#include "core/spaces/I3Layout.h"
#include "core/spaces/MonitorIdentity.h"
#include "core/spaces/SpaceStore.h"
#include "core/switcher/DirectSwitchDriver.h"
#include "core/switcher/SpaceSwitcher.h"
#include "platform/fake/FakeI3WindowManager.h"
#include "platform/fake/FakeScheduler.h"
#include "platform/fake/FakeWindowServer.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using namespace deskmark;
using namespace std::chrono_literals;

namespace {

QByteArray recorded(const QString& name) {
    QFile file(QStringLiteral(I3IPC_DATA "/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString uuidOfName(const QString& outputName) {
    return MonitorIdentity::displayUUIDs({MonitorIdentity(outputName, {}, {})}).first();
}

// The displays SpaceStore reads from a layout.
QList<CGSDisplay> displaysOf(const I3Layout& layout) {
    FakeWindowServer server;
    server.setAnswer(layout.displaySpaces());
    return SpaceStore(server).displays();
}

QStringList uuids(const CGSDisplay& display) {
    QStringList list;
    for (const CGSSpace& space : display.spaces)
        list << space.uuid;
    return list;
}

// The acceptance layout: "1:mail" and "2:code" on LEFT, "3:mail-log" and "4:notes" on
// RIGHT; the mail project spans both outputs.
struct Rig {
    Rig() : projects(folder.path()), log(folder.filePath("swdbg.log"), false) {
        wm.setOutputs({{"LEFT"}, {"RIGHT"}});
        wm.setWorkspaces({{"1:mail", "LEFT", false},
                          {"2:code", "LEFT", true},
                          {"3:mail-log", "RIGHT", false},
                          {"4:notes", "RIGHT", true}},
                         "RIGHT");
        const QUuid mail = projects.addProject("mail", std::nullopt).id;
        projects.assign(mail, "workspace:1:mail");
        projects.assign(mail, "workspace:3:mail-log");
        projects.assign(projects.addProject("code", std::nullopt).id, "workspace:2:code");
        QObject::connect(&server, &WindowServer::activeSpaceChanged, [this] { ++announcements; });
    }
    std::optional<QString> current(const QString& output) const {
        return spaces.currentSpace(uuidOfName(output));
    }
    void settle() {
        for (int i = 0; i < 20; ++i)
            scheduler.advance(50ms);
    }

    QTemporaryDir folder;
    FakeI3WindowManager wm;
    FakeScheduler scheduler;
    I3IpcWindowServer server{wm, scheduler, QStringLiteral("i3")};
    SpaceStore spaces{server};
    ProjectStore projects;
    SwitchDebugLog log;
    DirectSwitchDriver driver{server, spaces, scheduler, log};
    SpaceSwitcher switcher{spaces, projects, driver, scheduler, log};
    int announcements = 0;
};

} // namespace

class I3IpcTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void framingSurvivesAnyChunkingAndRejectsOtherBytes() {
        const QByteArray stream = I3IpcCodec::encode(I3IpcCodec::GetWorkspaces, "[]") +
                                  I3IpcCodec::encodeEvent(I3IpcCodec::WorkspaceEvent,
                                                          R"({"change":"focus"})") +
                                  I3IpcCodec::encode(I3IpcCodec::Subscribe);
        const auto read = [](I3IpcCodec& codec) {
            QStringList messages;
            while (const auto message = codec.next())
                messages << QStringLiteral("%1%2 %3")
                                .arg(message->isEvent ? "event " : "")
                                .arg(message->type)
                                .arg(QString::fromUtf8(message->payload));
            return messages;
        };
        const QStringList expected{"1 []", R"(event 0 {"change":"focus"})", "2 "};
        I3IpcCodec whole;
        whole.feed(stream);
        QCOMPARE(read(whole), expected);

        I3IpcCodec byByte;
        QStringList messages;
        for (char byte : stream) {
            byByte.feed(QByteArray(1, byte));
            messages << read(byByte);
        }
        QCOMPARE(messages, expected);

        // A stream that is not i3 IPC, or claims an absurd length, is broken for good.
        I3IpcCodec wrong;
        wrong.feed("HTTP/1.1 400 Bad Request\r\n\r\n");
        QVERIFY(!wrong.next());
        QVERIFY(wrong.isBroken());
        wrong.feed(I3IpcCodec::encode(I3IpcCodec::Subscribe));
        QVERIFY(!wrong.next());
        wrong.reset();
        wrong.feed(I3IpcCodec::encode(I3IpcCodec::Subscribe));
        QVERIFY(wrong.next());

        QByteArray huge = I3IpcCodec::encode(I3IpcCodec::GetOutputs);
        const quint32 length = I3IpcCodec::kLargestPayload + 1;
        huge.replace(6, 4, QByteArray(reinterpret_cast<const char*>(&length), 4));
        I3IpcCodec tooLong;
        tooLong.feed(huge);
        QVERIFY(!tooLong.next());
        QVERIFY(tooLong.isBroken());
    }

    void i3RepliesBecomeOneDisplayPerActiveOutput() {
        I3Layout layout;
        QVERIFY(!layout.displaySpaces().isValid());
        QVERIFY(layout.setOutputs(recorded("i3-outputs.json")));
        QVERIFY(!layout.isComplete());
        QVERIFY(layout.setWorkspaces(recorded("i3-workspaces.json")));

        const QList<CGSDisplay> displays = displaysOf(layout);
        QCOMPARE(displays.size(), 2); // xroot-0 and the disabled HDMI-2 are no displays
        // Known by name like an EDID-less RandR monitor, so the UUID is the one the EWMH
        // source gives the same monitor.
        QCOMPARE(displays[0].displayUUID, QStringLiteral("31F7D540-BF36-556A-AA38-8F81A9F610F5"));
        QCOMPARE(displays[1].displayUUID, uuidOfName("RIGHT"));
        QCOMPARE(uuids(displays[0]), (QStringList{"workspace:1:mail", "workspace:2:code"}));
        QCOMPARE(uuids(displays[1]), (QStringList{"workspace:3:mail-log", "workspace:4",
                                                   "workspace:scratch notes"}));
        QCOMPARE(displays[0].currentUUID, QStringLiteral("workspace:2:code"));
        QCOMPARE(displays[1].currentUUID, QStringLiteral("workspace:4"));
        QCOMPARE(displays[1].spaces[0].managedID, 3);
        QCOMPARE(displays[1].spaces[2].managedID, -1); // a named workspace has no number

        QCOMPARE(layout.mainDisplayUUID(), uuidOfName("RIGHT")); // the primary output
        QCOMPARE(layout.displayUUIDOfOutput("LEFT"), displays[0].displayUUID);
        QCOMPARE(layout.displayUUIDOfOutput("HDMI-2"), std::nullopt);
        QCOMPARE(layout.workspaceName(displays[1].displayUUID, 2), QStringLiteral("scratch notes"));
        QCOMPARE(layout.workspaceName(displays[1].displayUUID, 3), std::nullopt);
        QCOMPARE(layout.firstDisplayWorkspaces(), (QStringList{"1:mail", "2:code"}));

        // A monitor the platform knows better (i3 on X11: the RandR monitor's EDID) keeps
        // the UUID it has under an EWMH window manager.
        const MonitorIdentity withEdid = MonitorIdentity::reported("LEFT", "DEL", "41137", "7");
        layout.setMonitorFacts([&withEdid](const QString& output) -> std::optional<MonitorIdentity> {
            return output == "LEFT" ? std::optional(withEdid) : std::nullopt;
        });
        QVERIFY(layout.setOutputs(recorded("i3-outputs.json")));
        QCOMPARE(layout.displayUUIDOfOutput("LEFT"), MonitorIdentity::displayUUIDs({withEdid}).first());
        QCOMPARE(layout.displayUUIDOfOutput("RIGHT"), uuidOfName("RIGHT"));

        // Replies that are not lists of objects change nothing.
        for (const QByteArray& bad : {QByteArray("{}"), QByteArray("[1,2]"), QByteArray("[{")}) {
            QVERIFY(!layout.setOutputs(bad));
            QVERIFY(!layout.setWorkspaces(bad));
        }
        QCOMPARE(displaysOf(layout).size(), 2);
    }


    void swayOutputsAreKnownByMakeModelAndSerial() {
        I3Layout layout;
        QVERIFY(layout.setOutputs(recorded("sway-outputs.json")));
        QVERIFY(layout.setWorkspaces(recorded("sway-workspaces.json")));
        const QList<CGSDisplay> displays = displaysOf(layout);
        QCOMPARE(displays.size(), 2);
        QCOMPARE(displays[0].currentUUID, QStringLiteral("workspace:1:mail"));
        QCOMPARE(displays[1].currentUUID, QStringLiteral("workspace:3:mail-log"));
        QCOMPARE(layout.mainDisplayUUID(), displays[0].displayUUID);

        // The same monitor on another connector keeps its UUID; one without a serial
        // is told apart from its twin by the connector.
        QJsonDocument moved = QJsonDocument::fromJson(recorded("sway-outputs.json"));
        QJsonArray outputs = moved.array();
        QJsonObject first = outputs[0].toObject();
        first["name"] = "DP-3";
        outputs[0] = first;
        QJsonObject twin = outputs[1].toObject();
        twin["name"] = "HDMI-A-2";
        outputs << twin;
        I3Layout replugged;
        QVERIFY(replugged.setOutputs(QJsonDocument(outputs).toJson()));
        QCOMPARE(replugged.displayUUIDOfOutput("DP-3"), displays[0].displayUUID);
        QCOMPARE_NE(replugged.displayUUIDOfOutput("HDMI-A-2"),
                    replugged.displayUUIDOfOutput("HDMI-A-1"));
        QCOMPARE_NE(displays[0].displayUUID, uuidOfName("DP-1"));
    }

    void eventsMarkWhatIsStale() {
        const QJsonObject events = QJsonDocument::fromJson(recorded("events.json")).object();
        const auto staleAfter = [&events](quint32 type, const char* name) {
            return I3Layout::staleAfter(
                type, QJsonDocument(events.value(name).toObject()).toJson(QJsonDocument::Compact));
        };
        using S = I3Layout::Staleness;
        for (const char* change : {"focus", "init", "empty", "rename", "move"})
            QCOMPARE(staleAfter(I3IpcCodec::WorkspaceEvent, change), S::Workspaces);
        QCOMPARE(staleAfter(I3IpcCodec::WorkspaceEvent, "urgent"), S::None);
        QCOMPARE(staleAfter(I3IpcCodec::OutputEvent, "output"), S::Everything);
        QCOMPARE(staleAfter(3, "window"), S::None);
    }

    void workspaceNamesAreQuotedForTheCommandParser() {
        QCOMPARE(I3IpcWindowServer::workspaceCommand("2:a \"b\" \\c"),
                 QByteArray("workspace --no-auto-back-and-forth \"2:a \\\"b\\\" \\\\c\""));
    }

    // A project over both outputs: the chosen output first, the other one next, and the
    // focus back on the chosen output at the end; every change arrives as an event.
    void switchingAProjectShowsItOnEveryOutputAndEndsOnTheChosenOne() {
        Rig rig;
        QVERIFY(!rig.server.hasLayout());
        QVERIFY(rig.spaces.displays().isEmpty());
        rig.server.start();
        QVERIFY(rig.server.isConnected());
        QCOMPARE(rig.announcements, 1);
        QCOMPARE(rig.spaces.displays().size(), 2);
        QCOMPARE(rig.current("LEFT"), QStringLiteral("workspace:2:code"));
        QCOMPARE(rig.current("RIGHT"), QStringLiteral("workspace:4:notes"));
        QCOMPARE(rig.spaces.displayUUID("RIGHT"), uuidOfName("RIGHT"));
        QCOMPARE(rig.spaces.mainDisplayUUID(), uuidOfName("LEFT"));

        rig.switcher.switchSpace("workspace:1:mail", uuidOfName("LEFT"));
        rig.settle();
        const QString prefix = QStringLiteral("workspace --no-auto-back-and-forth ");
        QCOMPARE(rig.wm.commands(),
                 (QStringList{prefix + "\"1:mail\"", prefix + "\"3:mail-log\"", prefix + "\"1:mail\""}));
        QCOMPARE(rig.current("LEFT"), QStringLiteral("workspace:1:mail"));
        QCOMPARE(rig.current("RIGHT"), QStringLiteral("workspace:3:mail-log"));
        QCOMPARE(rig.wm.focusedOutput(), QStringLiteral("LEFT"));
        QCOMPARE(rig.announcements, 3); // one per output that changed; the refocus changes nothing

        // A Space that shows already is not asked for; one Space alone needs no refocus.
        rig.switcher.switchSpace("workspace:3:mail-log", uuidOfName("RIGHT"));
        rig.switcher.switchSpace("workspace:2:code", uuidOfName("LEFT"));
        rig.settle();
        QCOMPARE(rig.wm.commands().mid(3), (QStringList{prefix + "\"2:code\""}));
    }

    void aWindowManagerThatRestartsIsFoundAgain() {
        Rig rig;
        rig.server.start();
        const QList<CGSDisplay> before = rig.spaces.displays();

        // i3 goes away: the loss is logged once, the layout read last stays, and no
        // switch can be asked for meanwhile.
        rig.wm.refuseConnections(true);
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: i3 との IPC 接続が切れた。接続し直す");
        rig.wm.drop();
        QCOMPARE(rig.spaces.displays().size(), before.size());
        QVERIFY(!rig.server.requestSpace(uuidOfName("LEFT"), 0));
        // Tries after 0.1, 0.3, 0.7, 1.5, 3.1 and 6.3 s, then every 5 s.
        QTest::failOnWarning(QRegularExpression(".*"));
        rig.scheduler.advance(99ms);
        QCOMPARE(rig.wm.connectionCount(), 1);
        rig.scheduler.advance(3100ms);

        // A new i3 with a new layout answers the next try, at 6.3 s.
        rig.wm.setWorkspaces({{"1", "LEFT", true}, {"2", "RIGHT", true}}, "LEFT");
        rig.wm.refuseConnections(false);
        rig.scheduler.advance(3100ms);
        QVERIFY(!rig.server.isConnected());
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: i3 の IPC ソケットに接続した");
        rig.scheduler.advance(1ms);
        QVERIFY(rig.server.isConnected());
        QCOMPARE(rig.wm.connectionCount(), 2);
        QCOMPARE(rig.announcements, 2);
        QCOMPARE(rig.current("LEFT"), QStringLiteral("workspace:1"));
        QCOMPARE(rig.current("RIGHT"), QStringLiteral("workspace:2"));

        // Events flow again, and a second loss is reported again, once.
        rig.wm.replugOutputs({{"LEFT"}});
        QCOMPARE(rig.announcements, 3);
        QCOMPARE(rig.spaces.displays().size(), 1);
        QVERIFY(rig.server.requestSpace(uuidOfName("LEFT"), 0));
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: i3 との IPC 接続が切れた。接続し直す");
        rig.wm.drop();
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: i3 の IPC ソケットに接続した");
        rig.scheduler.advance(100ms);
        QVERIFY(rig.server.isConnected());
    }

    // Bytes that are not i3 IPC end the connection, which then starts over.
    void garbageOnTheSocketReconnects() {
        Rig rig;
        rig.server.start();
        QTest::ignoreMessage(QtWarningMsg,
                             "Deskmark: i3 の IPC ソケットから読めないデータが届いたため接続し直す");
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: i3 との IPC 接続が切れた。接続し直す");
        Q_EMIT rig.wm.received("garbage that is long enough");
        QVERIFY(!rig.server.isConnected());
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: i3 の IPC ソケットに接続した");
        rig.scheduler.advance(100ms);
        QVERIFY(rig.server.isConnected());
        QCOMPARE(rig.spaces.displays().size(), 2);
    }
};

QTEST_GUILESS_MAIN(I3IpcTest)
#include "I3IpcTest.moc"
