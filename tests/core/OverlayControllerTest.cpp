#include "core/overlay/OverlayController.h"
#include "core/LabelStores.h"
#include "core/MissionControlTree.h"
#include "core/overlay/OverviewLabelLayout.h"
#include "core/overlay/OverviewPoller.h"
#include "core/spaces/SpaceStore.h"
#include "platform/fake/FakeLabelTextMeasurer.h"
#include "platform/fake/FakeOverviewLabelWindows.h"
#include "platform/fake/FakeScheduler.h"
#include "platform/fake/FakeScreenProvider.h"
#include "platform/fake/FakeWindowServer.h"

#include <QTest>

using namespace deskmark;
using namespace std::chrono_literals;

namespace {

const ScreenInfo kPrimary{QStringLiteral("PRIMARY"), QRectF(0, 0, 1920, 1080),
                          QRectF(0, 0, 1920, 1080)};
const ScreenInfo kLeft{QStringLiteral("LEFT"), QRectF(-1280, 200, 1280, 800),
                       QRectF(-1280, 200, 1280, 800)};
const RgbColor kNavy = *RgbColor::fromDeskmarkHex(QStringLiteral("#000080"));
const RgbColor kRed{1, 0, 0};
const RgbColor kWhite{1, 1, 1};

// Two displays: PRIMARY with Spaces a1..a3, LEFT (left of it) with b1 and b2; the overview
// shows one thumbnail per Space along the top of each display.
struct Desk : LabelStores {
    Desk() {
        server.setLayout(
            {{"DISPLAY-A", "a1", {"a1", "a2", "a3"}}, {"DISPLAY-B", "b1", {"b1", "b2"}}});
        server.setScreenUUID(kPrimary.name, "display-a");
        server.setScreenUUID(kLeft.name, "DISPLAY-B");
        screens.setScreens({kPrimary, kLeft});
        ColorPreset fallback = *presets.preset(PresetStore::kDefaultID);
        fallback.bgHex = kNavy.deskmarkHex();
        presets.updatePreset(fallback);
    }

    void openOverview() {
        listA = mc.addDisplay(kPrimary.frame);
        for (int i = 0; i < 3; ++i)
            thumbs << mc.addButton(listA, QRectF(100 + 300 * i, 20, 200, 110));
        listB = mc.addDisplay(kLeft.frame);
        for (int i = 0; i < 2; ++i)
            thumbs << mc.addButton(listB, QRectF(-1200 + 300 * i, 220, 200, 110));
    }
    void closeOverview() {
        mc.close();
        thumbs.clear();
    }
    // Slides every thumbnail sideways.
    void slide(double dx) {
        for (const auto& thumb : thumbs)
            thumb->setFrame(thumb->frame()->translated(dx, 0));
    }
    void tickTimes(int count) {
        for (int i = 0; i < count; ++i)
            controller.tick();
    }
    QStringList shownTexts() const {
        QStringList texts;
        for (const OverviewLabelScreen& screen : windows.shows.last().screens) {
            for (const auto& box : screen.boxes)
                texts << screen.screen.name + ":" + box.text;
        }
        return texts;
    }

    FakeWindowServer server;
    SpaceStore spaces{server};
    MissionControlTree mc;
    AXThumbnails probe{mc.tree};
    FakeScreenProvider screens;
    FakeOverviewLabelWindows windows;
    FakeLabelTextMeasurer measurer;
    OverlayController controller{projects, presets, settings, spaces,
                                 probe,    screens, windows,  measurer};
    MissionControlTree::Element listA;
    MissionControlTree::Element listB;
    QList<MissionControlTree::Element> thumbs;
};

} // namespace

class OverlayControllerTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void resolveUsesThePresetThenDefaultColours() {
        Desk desk;
        ColorPreset red = desk.presets.addPreset();
        red.bgHex = kRed.deskmarkHex();
        desk.presets.updatePreset(red);
        desk.projects.set("Own", red.id, "a1");
        desk.projects.set("Plain", std::nullopt, "a2");
        desk.openOverview();

        const auto labels = desk.controller.resolve(desk.probe.byDisplay());
        QCOMPARE(labels.size(), 2);
        QCOMPARE(labels[0].name, "Own");
        QCOMPARE(labels[0].bgColor, kRed);
        QCOMPARE(labels[0].textColor, kWhite);
        QCOMPARE(labels[0].frame, QRectF(100, 20, 200, 110));
        QCOMPARE(labels[0].screen, kPrimary);
        QCOMPARE(labels[1].bgColor, kNavy); // no preset: the default preset's colours
    }

    void resolveSkipsWhatCannotBeLabelled() {
        Desk desk;
        const Project shared = desk.projects.addProject("Shared", std::nullopt);
        desk.projects.assign(shared.id, "a1");
        desk.projects.assign(shared.id, "a3");
        desk.projects.setName("Beta", "b1");
        desk.projects.setName("Gamma", "b2");
        desk.openOverview();
        QCOMPARE(desk.controller.resolve(desk.probe.byDisplay()).size(), 4);

        // A thumbnail that starts above its display's top edge is left out alone.
        desk.thumbs[3]->setFrame(QRectF(-1200, 150, 200, 110));
        auto labels = desk.controller.resolve(desk.probe.byDisplay());
        QCOMPARE(labels.size(), 3);
        QCOMPARE(labels[2].name, "Gamma");
        QCOMPARE(labels[2].screen, kLeft);

        // One thumbnail more than Spaces: that display gets nothing, the other keeps its own.
        desk.thumbs[3]->setFrame(QRectF(-1200, 220, 200, 110));
        const auto extra = desk.mc.addButton(desk.listB, QRectF(-600, 220, 200, 110));
        labels = desk.controller.resolve(desk.probe.byDisplay());
        QCOMPARE(labels.size(), 2);
        QCOMPARE(labels[0].name, "Shared");
        QCOMPARE(labels[1].name, "Shared"); // two Spaces, one project: two equal labels
        QCOMPARE(labels[1].frame, QRectF(700, 20, 200, 110));
        QCOMPARE(labels[0].bgColor, labels[1].bgColor);
        desk.listB->removeChild(extra);

        // An empty name hides every Space of the project; so does losing the screen's UUID.
        Project renamed = *desk.projects.project(shared.id);
        renamed.name.clear();
        desk.projects.updateProject(renamed);
        desk.server.setScreenUUID(kLeft.name, "UNKNOWN");
        QVERIFY(desk.controller.resolve(desk.probe.byDisplay()).isEmpty());
    }

    void labelsWaitForTheThumbnailsToSettle() {
        Desk desk;
        desk.projects.setName("Alpha", "a1");
        desk.openOverview();
        desk.controller.tick();
        desk.slide(40); // still sliding in
        desk.controller.tick();
        desk.slide(1.5); // jitter within the tolerance counts as still
        desk.controller.tick();
        QVERIFY(desk.windows.shows.isEmpty());
        desk.controller.tick(); // the second still tick
        QCOMPARE(desk.windows.shows.size(), 1);
        QVERIFY(desk.windows.shows[0].fade);
        QCOMPARE(desk.shownTexts(), QStringList{"PRIMARY:Alpha"});
        QCOMPARE(desk.windows.shows[0].screens[0].boxes[0].rect.left(), 141.5);
    }

    void labelsAppearByTheFifthTickWhateverMoves() {
        Desk desk;
        desk.projects.setName("Alpha", "a1");
        desk.openOverview();
        for (int tick = 1; tick <= 4; ++tick) {
            desk.controller.tick();
            desk.slide(10);
        }
        QVERIFY(desk.windows.shows.isEmpty());
        desk.controller.tick();
        QCOMPARE(desk.windows.shows.size(), 1);
        QVERIFY(desk.windows.shows[0].fade);
    }

    void inputSuppressesLabelsUntilTheOverviewCloses() {
        Desk desk;
        desk.projects.setName("Alpha", "a1");
        desk.openOverview();
        desk.controller.suppressByInput(); // nothing shown yet: no effect
        desk.tickTimes(3);
        QVERIFY(desk.windows.visible);

        desk.controller.suppressByInput();
        QCOMPARE(desk.windows.hides, 1);
        desk.tickTimes(6);
        QCOMPARE(desk.windows.shows.size(), 1);

        desk.closeOverview();
        QVERIFY(!desk.controller.tick());
        QCOMPARE(desk.windows.hides, 1); // already down
        desk.openOverview();
        desk.tickTimes(3);
        QCOMPARE(desk.windows.shows.size(), 2);
        QVERIFY(desk.windows.visible);
    }

    void shownLabelsRedrawOnlyWhenTheyChange() {
        Desk desk;
        desk.projects.setName("Alpha", "a1");
        desk.openOverview();
        desk.tickTimes(3);
        QCOMPARE(desk.windows.shows.size(), 1);

        const auto move = [&](double dx, double dy) {
            desk.thumbs[0]->setFrame(desk.thumbs[0]->frame()->translated(dx, dy));
            desk.controller.tick();
        };
        move(2, 0);
        move(0, -2);
        QCOMPARE(desk.windows.shows.size(), 1);
        move(1, 0); // three points from what is shown
        QCOMPARE(desk.windows.shows.size(), 2);
        QVERIFY(!desk.windows.shows[1].fade);
        QCOMPARE(desk.windows.shows[1].screens[0].boxes[0].rect.left(), 103.0);

        desk.projects.setName("Alpha 2", "a1");
        desk.controller.tick();
        QCOMPARE(desk.shownTexts(), QStringList{"PRIMARY:Alpha 2"});
        desk.projects.setName("Beta", "b2");
        desk.controller.tick();
        QCOMPARE(desk.shownTexts(), (QStringList{"PRIMARY:Alpha 2", "LEFT:Beta"}));
        QCOMPARE(desk.windows.hides, 0);
    }

    void disabledLabelsHideButCountingGoesOn() {
        Desk desk;
        desk.projects.setName("Alpha", "a1");
        desk.openOverview();
        desk.tickTimes(3);
        desk.settings.setMcLabelEnabled(false);
        desk.controller.hideLabelsNow();
        desk.controller.hideLabelsNow();
        QCOMPARE(desk.windows.hides, 1);
        for (int i = 0; i < 3; ++i) {
            desk.slide(10);
            QVERIFY(desk.controller.tick());
        }
        QCOMPARE(desk.controller.presentDisplayUUIDs(), (QSet<QString>{"DISPLAY-A", "DISPLAY-B"}));
        QCOMPARE(desk.windows.shows.size(), 1);

        // Switched on again while thumbnails still move: the overview has been open for
        // more than five ticks, so the labels come back at once.
        desk.settings.setMcLabelEnabled(true);
        desk.slide(10);
        desk.controller.tick();
        QCOMPARE(desk.windows.shows.size(), 2);
    }

    void pollerFollowsTheOverview() {
        Desk desk;
        FakeScheduler scheduler;
        QList<QSet<QString>> handed;
        OverviewPoller poller(scheduler, desk.probe, desk.controller, desk.settings,
                              [&](const QSet<QString>& displays) { handed << displays; });
        poller.start();
        scheduler.advance(1s);
        QVERIFY(!poller.isFastPolling());

        desk.openOverview();
        scheduler.advance(200ms);
        QVERIFY(poller.isFastPolling());
        scheduler.advance(150ms); // three fast ticks
        QCOMPARE(handed, (QList<QSet<QString>>{{"DISPLAY-A", "DISPLAY-B"}}));

        desk.mc.overview->removeChild(desk.mc.overview->children().last());
        scheduler.advance(50ms);
        QCOMPARE(handed.last(), QSet<QString>{"DISPLAY-A"});

        desk.closeOverview();
        scheduler.advance(50ms);
        QVERIFY(!poller.isFastPolling());
        QCOMPARE(handed.size(), 3);
        QVERIFY(handed.last().isEmpty());
        QCOMPARE(scheduler.activeRepeatingCount(), 1); // detection only

        // With labels off the fast timer still runs, at the detection pace.
        desk.settings.setMcLabelEnabled(false);
        desk.openOverview();
        scheduler.advance(150ms); // the next detection
        QVERIFY(poller.isFastPolling());
        scheduler.advance(150ms);
        QCOMPARE(handed.size(), 3);
        scheduler.advance(50ms);
        QCOMPARE(handed.size(), 4);
    }

    void layoutPlacesBoxesOverTheirThumbnails_data() {
        QTest::addColumn<QString>("position");
        QTest::addColumn<double>("y"); // the same on both screens
        // Thumbnails 110 high, boxes 21 high (13 of text, 4 of padding above and below).
        QTest::newRow("bottom") << "bottom" << 109.0;
        QTest::newRow("center") << "center" << 64.5;
        QTest::newRow("top") << "top" << 20.0;
    }
    void layoutPlacesBoxesOverTheirThumbnails() {
        QFETCH(QString, position);
        QFETCH(double, y);
        OverviewLabelStyle style;
        style.fontSize = 10; // a 12.5 point line, rounded up to 13
        style.singleLine = true;
        style.hPadding = 3;
        style.vPadding = 4;
        style.vPosition = enumOrFallback<MCLabelVPosition>(position);
        const QList<ResolvedLabel> labels{
            {QRectF(100, 20, 200, 110), "One", kRed, kWhite, kPrimary},
            {QRectF(-1200, 220, 200, 110), "Two", kNavy, kWhite, kLeft},
            {QRectF(400, 20, 200, 110), "Three", kNavy, kRed, kPrimary},
        };
        const auto screens = OverviewLabelLayout::layout(labels, style, FakeLabelTextMeasurer());
        QCOMPARE(screens.size(), 2);
        QCOMPARE(screens[0].screen, kPrimary);
        QCOMPARE(screens[0].boxes.size(), 2);
        QCOMPARE(screens[0].boxes[0].rect, QRectF(100, y, 200, 21));
        QCOMPARE(screens[0].boxes[0].textRect, QRectF(3, 4, 194, 13));
        QCOMPARE(screens[0].boxes[1].rect.left(), 400.0);
        QCOMPARE(screens[0].boxes[1].textColor, kRed);
        // The left screen's window starts at its own origin.
        QCOMPARE(screens[1].screen, kLeft);
        QCOMPARE(screens[1].boxes[0].rect, QRectF(80, y, 200, 21));
        QCOMPARE(screens[1].boxes[0].background, kNavy);
    }

    void longNamesWrapAndGrowTheBox() {
        OverviewLabelStyle style;
        style.fontSize = 10;
        style.hPadding = 3;
        style.vPadding = 4;
        const ResolvedLabel label{QRectF(0, 0, 200, 110), QString(36, 'W'), kRed, kWhite, kPrimary};
        // 36 characters of 6 points do not fit 194 points: two lines.
        auto box = OverviewLabelLayout::layout({label}, style, FakeLabelTextMeasurer())[0].boxes[0];
        QCOMPARE(box.rect, QRectF(0, 77, 200, 33));
        QCOMPARE(box.textRect, QRectF(3, 4, 194, 25));
        style.singleLine = true;
        box = OverviewLabelLayout::layout({label}, style, FakeLabelTextMeasurer())[0].boxes[0];
        QCOMPARE(box.rect.height(), 21.0);
    }
};

QTEST_GUILESS_MAIN(OverlayControllerTest)
#include "OverlayControllerTest.moc"
