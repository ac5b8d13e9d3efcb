#include "MissionControlTree.h"

#include "core/model/ProjectStore.h"
#include "core/overlay/AXThumbnails.h"
#include "core/spaces/SpaceStore.h"
#include "core/switcher/DirectSwitchDriver.h"
#include "core/switcher/OverviewOpener.h"
#include "core/switcher/OverviewSwitchDriver.h"
#include "core/switcher/SpaceSwitcher.h"
#include "platform/fake/FakeScheduler.h"
#include "platform/fake/FakeScreenProvider.h"
#include "platform/fake/FakeWindowServer.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace deskmark;
using namespace std::chrono_literals;

namespace {

// Two displays with Spaces of their own, the way a window server with separate Spaces
// per display reports them; "shared" makes both list the same desktops instead.
struct Layout {
    static QList<FakeWindowServer::Display> separate() {
        return {{"D1", "a1", {"a1", "a2", "a3"}}, {"D2", "b1", {"b1", "b2", "b3"}}};
    }
    static QList<FakeWindowServer::Display> shared() {
        const QStringList desktops{"desktop-1", "desktop-2", "desktop-3"};
        return {{"D1", "desktop-1", desktops}, {"D2", "desktop-1", desktops}};
    }
};

struct Rig {
    explicit Rig(const QList<FakeWindowServer::Display>& layout,
                 const QHash<QString, QString>& names = {})
        : projects(folder.path()), log(folder.filePath("swdbg.log"), true) {
        server.setLayout(layout);
        // Spaces given the same name share one project.
        QHash<QString, QUuid> byName;
        for (auto it = names.cbegin(); it != names.cend(); ++it) {
            if (!byName.contains(*it))
                byName.insert(*it, projects.addProject(*it, std::nullopt).id);
            projects.assign(byName.value(*it), it.key());
        }
    }
    QStringList logLines() const {
        QFile file(folder.filePath("swdbg.log"));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
    }
    bool logHas(const QString& text) const {
        return logLines().indexOf(QRegularExpression("^\\d+\\.\\d{3} " +
                                                     QRegularExpression::escape(text) + ".*")) >= 0;
    }
    std::optional<QString> current(const QString& display) const {
        return spaces.currentSpace(display);
    }

    QTemporaryDir folder;
    FakeWindowServer server;
    SpaceStore spaces{server};
    ProjectStore projects;
    FakeScheduler scheduler;
    SwitchDebugLog log;
};

QStringList describe(const QList<SwitchTarget>& targets) {
    QStringList out;
    for (const SwitchTarget& target : targets)
        out << target.display.displayUUID + ":" + target.spaceUUID();
    return out;
}

class CallbackOpener : public OverviewOpener {
public:
    explicit CallbackOpener(std::function<void()> open) : open_(std::move(open)) {}
    void openOverview() override { open_(); }

private:
    std::function<void()> open_;
};

} // namespace

class SwitchEngineTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void switchTargets_data() {
        QTest::addColumn<bool>("shared");
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("unnamed Space: the chosen display alone")
            << false << "a3" << QStringList{"D1:a3"};
        QTest::newRow("the other display's first Space of the project")
            << false << "a2" << QStringList{"D1:a2", "D2:b2"};
        QTest::newRow("chosen on the second display: the first display follows")
            << false << "b3" << QStringList{"D2:b3", "D1:a2"};
        QTest::newRow("desktops spanning every display switch once")
            << true << "desktop-3" << QStringList{"D1:desktop-3"};
    }
    void switchTargets() {
        QFETCH(bool, shared);
        QFETCH(QString, chosen);
        QFETCH(QStringList, expected);
        Rig rig(shared ? Layout::shared() : Layout::separate(),
                {{"a2", "Web"}, {"b2", "Web"}, {"b3", "Web"}, {"desktop-2", "Web"},
                 {"desktop-3", "Web"}, {"a1", "Mail"}});
        const QList<CGSDisplay> displays = rig.spaces.displays();
        const CGSDisplay& display = chosen.startsWith('b') ? displays[1] : displays[0];
        const auto space = std::find_if(display.spaces.begin(), display.spaces.end(),
                                        [&](const CGSSpace& s) { return s.uuid == chosen; });
        QCOMPARE(describe(SpaceSwitcher::switchTargets(display, *space, displays, rig.projects)),
                 expected);
    }

    // The direct driver against a window manager that switches, lags or refuses.
    void directSwitching_data() {
        QTest::addColumn<QString>("space");
        QTest::addColumn<QString>("display");
        QTest::addColumn<int>("ignored");
        QTest::addColumn<QStringList>("requests");
        QTest::addColumn<QString>("currentOnD1");
        QTest::addColumn<QString>("currentOnD2");
        QTest::addColumn<QString>("logged");
        QTest::newRow("already current: nothing asked")
            << "a1" << "D1" << 0 << QStringList{} << "a1" << "b1" << "";
        QTest::newRow("unknown Space: nothing asked")
            << "zz" << "D1" << 0 << QStringList{} << "a1" << "b1" << "";
        QTest::newRow("both displays of the project, chosen first and asked for again at the end")
            << "a2" << "D1" << 0 << QStringList{"D1:1", "D2:1", "D1:1"} << "a2" << "b2"
            << "SW: after press wanted=b2 now=b2";
        QTest::newRow("a request that did not take effect is sent again")
            << "a3" << "D1" << 1 << QStringList{"D1:2", "D1:2"} << "a3" << "b1"
            << "SW: after press wanted=a3 now=a1";
        QTest::newRow("the third try gives up")
            << "a3" << "D1" << 5 << QStringList{"D1:2", "D1:2"} << "a1" << "b1"
            << "SW: give up after 3 tries";
    }
    void directSwitching() {
        QFETCH(QString, space);
        QFETCH(QString, display);
        QFETCH(int, ignored);
        QFETCH(QStringList, requests);
        QFETCH(QString, currentOnD1);
        QFETCH(QString, currentOnD2);
        QFETCH(QString, logged);
        Rig rig(Layout::separate(), {{"a2", "Web"}, {"b2", "Web"}});
        rig.server.ignoreRequests(ignored);
        DirectSwitchDriver driver(rig.server, rig.spaces, rig.scheduler, rig.log);
        SpaceSwitcher switcher(rig.spaces, rig.projects, driver, rig.scheduler, rig.log);
        int rounds = 0;
        switcher.setRoundFinished([&rounds] { ++rounds; });

        switcher.switchSpace(space, display);
        rig.scheduler.advance(10s);

        QCOMPARE(rig.server.requests(), requests);
        QCOMPARE(rig.current("D1"), currentOnD1);
        QCOMPARE(rig.current("D2"), currentOnD2);
        QCOMPARE(rounds, requests.isEmpty() && space == "zz" ? 0 : 1);
        if (!logged.isEmpty())
            QVERIFY2(rig.logHas(logged), qPrintable(rig.logLines().join('\n')));
        QCOMPARE(rig.scheduler.activeRepeatingCount(), 0);
    }

    void ignoredRequestIsRetriedAfterTheWaitAndAPause() {
        Rig rig(Layout::separate());
        rig.server.ignoreRequests(1);
        DirectSwitchDriver driver(rig.server, rig.spaces, rig.scheduler, rig.log);
        SpaceSwitcher switcher(rig.spaces, rig.projects, driver, rig.scheduler, rig.log);
        switcher.switchSpace("a2", "D1");
        rig.scheduler.advance(3000ms);
        QVERIFY2(rig.server.requests().size() == 1, qPrintable(rig.logLines().join('\n')));
        rig.scheduler.advance(199ms); // the 3.05 s poll sees the timeout; retry 0.15 s later
        QCOMPARE(rig.server.requests().size(), 1);
        rig.scheduler.advance(1ms);
        QCOMPARE(rig.server.requests().size(), 2);
        QCOMPARE(rig.current("D1"), QString("a2"));
    }

    void debugLogOnlyWhenEnabled() {
        Rig rig(Layout::separate());
        const SwitchDebugLog silent(rig.folder.filePath("silent.log"), false);
        DirectSwitchDriver driver(rig.server, rig.spaces, rig.scheduler, silent);
        SpaceSwitcher switcher(rig.spaces, rig.projects, driver, rig.scheduler, silent);
        switcher.switchSpace("a2", "D1");
        rig.scheduler.advance(1s);
        QCOMPARE(rig.current("D1"), QString("a2"));
        QVERIFY(!QFile::exists(rig.folder.filePath("silent.log")));
    }

    // The overview driver on a scripted overview: thumbnails appear, move while the
    // overview animates, and are pressed only once they have stood still.
    void overviewSwitching_data() {
        QTest::addColumn<int>("thumbs");
        QTest::addColumn<int>("movingPolls");
        QTest::addColumn<int>("presses");
        QTest::addColumn<QString>("current");
        QTest::addColumn<QString>("logged");
        QTest::newRow("settles, pressed once")
            << 3 << 4 << 1 << "a3" << "SW: open done elapsed=0.";
        QTest::newRow("never settles: pressed at the timeout")
            << 3 << 1000 << 1 << "a3" << "SW: open timeout elapsed=3.05 matched=true stable=0";
        QTest::newRow("wrong thumbnail count never matches")
            << 2 << 0 << 0 << "a1" << "SW: give up after 3 tries";
    }
    void overviewSwitching() {
        QFETCH(int, thumbs);
        QFETCH(int, movingPolls);
        QFETCH(int, presses);
        QFETCH(QString, current);
        QFETCH(QString, logged);
        Rig rig(Layout::separate());
        FakeScreenProvider screens;
        screens.setScreens({{"left", {0, 0, 1000, 800}, {0, 0, 1000, 800}},
                            {"right", {1000, 0, 1000, 800}, {1000, 0, 1000, 800}}});
        rig.server.setScreenUUID("left", "D1");
        rig.server.setScreenUUID("right", "D2");
        MissionControlTree overview;
        AXThumbnails thumbnails(overview.tree);
        QList<MissionControlTree::Element> buttons;
        int pressed = 0;
        // Opening shows the left display's strip; a press switches and closes.
        CallbackOpener opener([&] {
            const auto list = overview.addDisplay(QRectF(0, 0, 1000, 800));
            for (int i = 0; i < thumbs; ++i) {
                auto button = MissionControlTree::addButton(
                    list, QRectF(100 + 200 * i, 20, 150, 90), QString::number(i + 1));
                button->setPressAction([&, i] {
                    ++pressed;
                    rig.server.switchTo("D1", QStringLiteral("a%1").arg(i + 1));
                    overview.close();
                });
                buttons << button;
            }
        });
        OverviewSwitchDriver driver(thumbnails, opener, rig.spaces, screens, rig.scheduler,
                                    rig.log);
        SpaceSwitcher switcher(rig.spaces, rig.projects, driver, rig.scheduler, rig.log);

        switcher.switchSpace("a3", "D1");
        for (int poll = 0; poll < 400; ++poll) {
            if (overview.overview && poll < movingPolls) {
                for (const auto& button : std::as_const(buttons))
                    button->setFrame(button->frame()->translated(1, 0));
            }
            rig.scheduler.advance(50ms);
        }
        QCOMPARE(pressed, presses);
        QCOMPARE(rig.current("D1"), current);
        QVERIFY2(rig.logHas(logged), qPrintable(rig.logLines().join('\n')));
    }
};

QTEST_GUILESS_MAIN(SwitchEngineTest)
#include "SwitchEngineTest.moc"
