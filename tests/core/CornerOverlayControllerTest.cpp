#include "core/overlay/CornerOverlayController.h"
#include "core/LabelStores.h"
#include "core/overlay/CornerLabelLayout.h"
#include "core/spaces/SpaceStore.h"
#include "platform/fake/FakeCornerLabelWindows.h"
#include "platform/fake/FakeLabelTextMeasurer.h"
#include "platform/fake/FakeScreenProvider.h"
#include "platform/fake/FakeWindowServer.h"

#include <QTest>

using namespace deskmark;

namespace {

const QString kA = QStringLiteral("AAAAAAAA-0000-4000-8000-00000000000A");
const QString kB = QStringLiteral("BBBBBBBB-0000-4000-8000-00000000000B");
// Two screens side by side, each with a 30-point panel along its top.
const ScreenInfo kLeft{"LEFT", QRectF(0, 0, 1280, 800), QRectF(0, 30, 1280, 770)};
const ScreenInfo kRight{"RIGHT", QRectF(1280, 0, 1280, 800), QRectF(1280, 30, 1280, 770)};
const RgbColor kBlack{0, 0, 0};
const RgbColor kWhite{1, 1, 1};
const RgbColor kRed{1, 0, 0};
const RgbColor kNavy = *RgbColor::fromDeskmarkHex("#000080");

// Display A shows Space a1 (of a1, a2), display B shows b1 (of b1, b2).
struct Desk : LabelStores {
    Desk() {
        server.setLayout({{kA, "a1", {"a1", "a2"}}, {kB, "b1", {"b1", "b2"}}});
        server.setScreenUUID(kLeft.name, kA);
        server.setScreenUUID(kRight.name, kB);
        screens.setScreens({kLeft, kRight});
        ColorPreset fallback = *presets.preset(PresetStore::kDefaultID);
        fallback.bgHex = kNavy.deskmarkHex();
        presets.updatePreset(fallback);
        red = presets.addPreset();
        red.bgHex = kRed.deskmarkHex();
        presets.updatePreset(red);
    }

    // Refreshes and returns what the windows were asked to do.
    QStringList refresh() {
        windows.log.clear();
        controller.refresh();
        return windows.log;
    }
    const FakeCornerLabelWindows::Window& window(const QString& display) const {
        return windows.windows.find(display).value();
    }

    FakeWindowServer server;
    SpaceStore spaces{server};
    FakeScreenProvider screens;
    FakeCornerLabelWindows windows;
    FakeLabelTextMeasurer measurer;
    CornerOverlayController controller{projects, presets, settings, spaces,
                                       screens,  windows, measurer};
    ColorPreset red;
};

} // namespace

class CornerOverlayControllerTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // ---- what is shown ----

    void namedSpacesShowTheirNameOnTheirDisplay() {
        Desk desk;
        desk.projects.set("Mail", desk.red.id, "a1");
        desk.projects.set("Build", std::nullopt, "b1");
        QCOMPARE(desk.refresh(), QStringList({"show " + kA, "show " + kB}));
        QCOMPARE(desk.windows.shownTexts(), QStringList({kA + ":Mail", kB + ":Build"}));

        const auto& a = desk.window(kA);
        QCOMPARE(a.background, kRed);
        QCOMPARE(a.label.textColor, kWhite);
        QCOMPARE(a.bgOpacity, 0.8);
        QCOMPARE(a.label.fontSize, 13.0);
        // The default place: bottom centre of the display's own visible frame.
        const auto expected =
            CornerLabelLayout::layout("Build", {}, kRight.visibleFrame, desk.measurer);
        QCOMPARE(desk.window(kB).label.frame.center().x(), kRight.visibleFrame.center().x());
        QCOMPARE(desk.window(kB).label.frame.bottom(), kRight.visibleFrame.bottom() - 12);
        QCOMPARE(desk.window(kB).label.frame.size(), expected.frame.size());
        QCOMPARE(desk.window(kB).background, kNavy); // no preset: the default preset
    }

    void unnamedSpacesShowNothingAtAll() {
        Desk desk;
        Project empty = desk.projects.addProject("Soon", std::nullopt);
        desk.projects.assign(empty.id, "b1");
        empty.name.clear();
        desk.projects.updateProject(empty);
        // a1 has no project; b1's project has an empty name: no fallback text anywhere.
        QCOMPARE(desk.refresh(), QStringList());
        QVERIFY(desk.windows.windows.isEmpty());

        // A display without a current Space or without a screen shows nothing either.
        desk.projects.setName("Mail", "a1");
        desk.projects.setName("Build", "b1");
        desk.server.setLayout({{kA, "", {"a1", "a2"}}, {kB, "b1", {"b1", "b2"}}});
        desk.screens.setScreens({kLeft});
        QCOMPARE(desk.refresh(), QStringList());
    }

    void labelsHideWhenTheirSpaceLosesItsNameOrTheirDisplay() {
        Desk desk;
        desk.projects.setName("Mail", "a1");
        desk.projects.setName("Build", "b1");
        desk.refresh();
        desk.projects.setName("", "a1");
        QCOMPARE(desk.refresh(), QStringList({"hide " + kA}));
        QCOMPARE(desk.windows.shownTexts(), QStringList({kB + ":Build"}));
        QCOMPARE(desk.refresh(), QStringList()); // hidden once, not again

        desk.server.switchTo(kA, "a2");
        desk.projects.setName("Notes", "a2");
        QCOMPARE(desk.refresh(), QStringList({"show " + kA}));
        QCOMPARE(desk.windows.shownTexts(), QStringList({kA + ":Notes", kB + ":Build"}));

        // A display that goes away takes its label.
        desk.server.setLayout({{kA, "a2", {"a1", "a2"}}});
        QCOMPARE(desk.refresh(), QStringList({"hide " + kB}));
    }

    void perDisplaySettingsTouchOnlyTheirDisplay() {
        Desk desk;
        desk.projects.setName("Mail", "a1");
        desk.projects.setName("Mail", "b1"); // the same project on both
        desk.refresh();
        const QRectF before = desk.window(kA).label.frame;

        desk.settings.setOverride(CornerOverrideItem::Position, true, kB);
        desk.settings.setCornerPosition(CornerPosition::TopLeft, kB);
        QCOMPARE(desk.refresh(), QStringList({"show " + kB}));
        QCOMPARE(desk.window(kA).label.frame, before);
        QCOMPARE(desk.window(kB).label.frame.topLeft(), QPointF(1280 + 12, 30 + 12));

        // A value stored while the override is off changes nothing.
        desk.settings.setCornerFontSize(30, kA);
        QCOMPARE(desk.refresh(), QStringList());

        desk.settings.setOverride(CornerOverrideItem::Enabled, true, kA);
        desk.settings.setCornerOverlayEnabled(false, kA);
        QCOMPARE(desk.refresh(), QStringList({"hide " + kA}));
        desk.settings.setCornerOverlayEnabled(false); // the global switch: B follows it
        QCOMPARE(desk.refresh(), QStringList({"hide " + kB}));
    }

    // ---- colours ----

    void colourModeChoosesPresetOrDefaultColours() {
        Desk desk;
        desk.projects.set("Mail", desk.red.id, "a1");
        desk.projects.set("Mail", desk.red.id, "b1");
        desk.settings.setOverride(CornerOverrideItem::ColorMode, true, kB);
        desk.settings.setCornerColorMode(CornerColorMode::DefaultColors, kB);
        desk.refresh();
        QCOMPARE(desk.window(kA).background, kRed);
        QCOMPARE(desk.window(kB).background, kBlack);
        QCOMPARE(desk.window(kB).label.textColor, kWhite);
    }

    // ---- the session: compositing and full-screen windows ----

    void withoutCompositingLabelsAreOpaqueWithHardEdges() {
        Desk desk;
        desk.projects.set("Mail", desk.red.id, "a1");
        desk.projects.setName("Build", "b1");
        desk.refresh();
        QVERIFY(desk.window(kA).label.blended);

        desk.controller.setCompositing(false);
        QCOMPARE(desk.refresh(), QStringList({"show " + kA, "show " + kB}));
        QCOMPARE(desk.window(kA).bgOpacity, 1.0);
        QVERIFY(!desk.window(kA).label.blended);
        QCOMPARE(desk.window(kA).background, kRed);
        // The opacity setting has nothing to change until a compositor starts.
        desk.settings.setCornerBgOpacity(0.3);
        desk.windows.log.clear();
        desk.controller.updateOpacityOnly();
        QCOMPARE(desk.refresh(), QStringList());

        desk.controller.setCompositing(true);
        QCOMPARE(desk.refresh(), QStringList({"show " + kA, "show " + kB}));
        QCOMPARE(desk.window(kB).bgOpacity, 0.3);
        QVERIFY(desk.window(kB).label.blended);
    }

    void aFullScreenWindowHidesTheLabelsOfItsScreenWhenAsked() {
        Desk desk;
        desk.projects.setName("Mail", "a1");
        desk.projects.setName("Build", "b1");
        desk.refresh();
        desk.controller.setFullScreenScreen("RIGHT");
        QCOMPARE(desk.refresh(), QStringList()); // the setting is off by default

        desk.settings.setHideLabelsOverFullScreen(true);
        QCOMPARE(desk.refresh(), QStringList({"hide " + kB}));
        desk.controller.setFullScreenScreen("LEFT"); // the window moved, or another came up
        QCOMPARE(desk.refresh(), QStringList({"hide " + kA, "show " + kB}));
        desk.controller.setFullScreenScreen(std::nullopt);
        QCOMPARE(desk.refresh(), QStringList({"show " + kA}));
        QCOMPARE(desk.windows.shownTexts(), QStringList({kA + ":Mail", kB + ":Build"}));
    }

    // ---- change detection and the partial updates ----

    void anUnchangedRefreshDoesNoWindowWork() {
        Desk desk;
        desk.projects.setName("Mail", "a1");
        desk.projects.setName("Build", "b1");
        desk.refresh();
        QCOMPARE(desk.refresh(), QStringList());

        desk.projects.setName("Mailbox", "a1");
        QCOMPARE(desk.refresh(), QStringList({"show " + kA}));
        ColorPreset fallback = *desk.presets.preset(PresetStore::kDefaultID);
        fallback.bgHex = "#101010"; // both labels use the default preset
        desk.presets.updatePreset(fallback);
        QCOMPARE(desk.refresh(), QStringList({"show " + kA, "show " + kB}));
        fallback.textHex = "#EEEEEE";
        desk.presets.updatePreset(fallback);
        QCOMPARE(desk.refresh(), QStringList({"show " + kA, "show " + kB}));
        QCOMPARE(desk.refresh(), QStringList());
    }

    void opacityRestylesWithoutRebuilding() {
        Desk desk;
        desk.projects.set("Mail", desk.red.id, "a1");
        desk.projects.setName("Build", "b1");
        desk.refresh();
        desk.windows.log.clear();
        desk.settings.setCornerBgOpacity(0.3);
        desk.controller.updateOpacityOnly();
        QCOMPARE(desk.windows.log, QStringList({"background " + kA, "background " + kB}));
        QCOMPARE(desk.window(kA).bgOpacity, 0.3);
        QCOMPARE(desk.window(kA).background, kRed);
        QCOMPARE(desk.window(kA).label.textColor, kWhite);
        QCOMPARE(desk.refresh(), QStringList());

        // An opacity override switched on (a refresh trigger) restyles as well.
        desk.settings.setOverride(CornerOverrideItem::BgOpacity, true, kB);
        desk.settings.setCornerBgOpacity(1.0, kB);
        QCOMPARE(desk.refresh(), QStringList({"background " + kB}));
    }

    void offsetsMoveWithoutRebuilding() {
        Desk desk;
        desk.projects.setName("Mail", "a1");
        desk.projects.setName("Build", "b1");
        desk.refresh();
        const QRectF a = desk.window(kA).label.frame;
        const QRectF b = desk.window(kB).label.frame;
        desk.windows.log.clear();

        desk.settings.setOverride(CornerOverrideItem::OffsetX, true, kB);
        desk.settings.setCornerOffsetX(-40, kB);
        desk.settings.setCornerOffsetY(25);
        desk.controller.updateOffsetOnly();
        QCOMPARE(desk.windows.log, QStringList({"move " + kA, "move " + kB}));
        QCOMPARE(desk.window(kA).label.frame, a.translated(0, -25));
        QCOMPARE(desk.window(kB).label.frame, b.translated(-40, -25));
        QCOMPARE(desk.refresh(), QStringList()); // already where a refresh puts them

        // Far beyond the screen: clamped inside the margin.
        desk.settings.setCornerOffsetY(-5000);
        desk.controller.updateOffsetOnly();
        QCOMPARE(desk.window(kA).label.frame.bottom(), kLeft.visibleFrame.bottom() - 12);
        desk.windows.log.clear();
        desk.controller.updateOffsetOnly();
        QVERIFY(desk.windows.log.isEmpty());
    }

    void partialUpdatesLeaveHiddenLabelsAlone() {
        Desk desk;
        desk.projects.setName("Mail", "a1");
        desk.refresh();
        desk.projects.setName("", "a1");
        desk.refresh();
        desk.windows.log.clear();
        desk.settings.setCornerBgOpacity(0.5);
        desk.settings.setCornerOffsetX(10);
        desk.controller.updateOpacityOnly();
        desk.controller.updateOffsetOnly();
        QVERIFY(desk.windows.log.isEmpty());
    }

    // ---- the overview ----

    void topRowLabelsStepAsideWhileTheOverviewIsOpen() {
        Desk desk;
        desk.projects.setName("Mail", "a1");
        desk.projects.setName("Build", "b1");
        desk.settings.setCornerPosition(CornerPosition::TopRight, kA);
        desk.settings.setOverride(CornerOverrideItem::Position, true, kA);
        desk.settings.setCornerPositionRaw("bottomLeft");
        desk.refresh();
        desk.windows.log.clear();

        desk.controller.setMcDisplays({kA, kB});
        desk.controller.applyMissionControlVisibility();
        QCOMPARE(desk.windows.log, QStringList({"fade " + kA + " out"}));
        desk.controller.applyMissionControlVisibility();
        QCOMPARE(desk.windows.log.size(), 1);
        QCOMPARE(desk.refresh(), QStringList()); // a refresh keeps it faded

        desk.windows.log.clear();
        desk.controller.setMcDisplays({});
        desk.controller.applyMissionControlVisibility();
        QCOMPARE(desk.windows.log, QStringList({"fade " + kA + " in"}));
    }

    void aLabelMovedIntoTheTopRowDuringTheOverviewFades() {
        Desk desk;
        desk.projects.setName("Mail", "a1");
        desk.refresh();
        desk.controller.setMcDisplays({kA});
        desk.controller.applyMissionControlVisibility();
        desk.settings.setCornerPositionRaw("top");
        QCOMPARE(desk.refresh(), QStringList({"show " + kA, "fade " + kA + " out"}));
        QCOMPARE(desk.window(kA).alpha, 0.0);
    }
};

QTEST_GUILESS_MAIN(CornerOverlayControllerTest)
#include "CornerOverlayControllerTest.moc"
