#include "core/MissionControlTree.h"
#include "core/overlay/AXThumbnails.h"

#include <QTest>

using namespace deskmark;

namespace {

QStringList titles(const AXDisplayThumbs& strip) {
    QStringList result;
    for (const AXThumb& thumb : strip.thumbs)
        result << thumb.title;
    return result;
}

const ScreenInfo kPrimary{QStringLiteral("PRIMARY"), QRectF(0, 0, 1920, 1080),
                          QRectF(0, 0, 1920, 1080)};
const ScreenInfo kLeft{QStringLiteral("LEFT"), QRectF(-1280, 200, 1280, 800),
                       QRectF(-1280, 200, 1280, 800)};

} // namespace

class OverviewProbeTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void closedOverviewHasNothing() {
        MissionControlTree mc;
        AXThumbnails probe(mc.tree);
        QVERIFY(!probe.isMissionControlPresent());
        QVERIFY(probe.byDisplay().isEmpty());
        QVERIFY(probe.allButtonFrames().isEmpty());

        mc.addButton(mc.addDisplay(QRectF(0, 0, 1920, 1080)), QRectF(100, 20, 200, 110));
        QVERIFY(probe.isMissionControlPresent());
        mc.close();
        QVERIFY(!probe.isMissionControlPresent());
        QVERIFY(probe.byDisplay().isEmpty());

        mc.tree.quitApplication(QStringLiteral("com.apple.dock"));
        QVERIFY(!probe.isMissionControlPresent());
        QVERIFY(probe.mcDisplays().displays.isEmpty());
    }

    void onlySpaceButtonsWithFramesAreThumbnails() {
        MissionControlTree mc;
        const auto list = mc.addDisplay(QRectF(0, 0, 1920, 1080));
        const auto first =
            mc.addButton(list, QRectF(100, 20, 200, 110), QStringLiteral("Desktop 1"));
        mc.addButton(list, QRectF(400, 20, 200, 110)); // no title
        mc.addButton(list, std::nullopt, QStringLiteral("no frame"));
        mc.addAddButton(list, QRectF(1800, 20, 60, 60));
        list->append(FakeAccessibilityElement::make({}, QStringLiteral("AXStaticText"),
                                                    QRectF(0, 0, 10, 10)));
        // A button outside the Space list (a window's close button, say).
        const auto display = mc.overview->children().first();
        std::static_pointer_cast<FakeAccessibilityElement>(display->children().first())
            ->append(
                FakeAccessibilityElement::make({}, QStringLiteral("AXButton"), QRectF(5, 5, 9, 9)));

        AXThumbnails probe(mc.tree);
        const auto strips = probe.byDisplay();
        QCOMPARE(strips.size(), 1);
        QCOMPARE(titles(strips[0]), (QStringList{"Desktop 1", ""}));
        QCOMPARE(strips[0].thumbs[0].frame, QRectF(100, 20, 200, 110));
        QVERIFY(strips[0].thumbs[0].element->press());
        QCOMPARE(first->pressCount(), 1);

        // Frames for the motion test: every button anywhere, except the add button.
        QCOMPARE(probe.allButtonFrames(),
                 (QList<QRectF>{QRectF(100, 20, 200, 110), QRectF(400, 20, 200, 110),
                                QRectF(5, 5, 9, 9)}));
    }

    void displaysKeepTheirOrderAndThumbnailsRunLeftToRight() {
        MissionControlTree mc;
        const auto left = mc.addDisplay(QRectF(0, 0, 1920, 1080));
        mc.addButton(left, QRectF(700, 20, 200, 110), QStringLiteral("c"));
        mc.addButton(left, QRectF(100, 20, 200, 110), QStringLiteral("a"));
        mc.addButton(left, QRectF(400, 20, 200, 110), QStringLiteral("b1"));
        mc.addButton(left, QRectF(400, 40, 200, 110),
                     QStringLiteral("b2")); // same x: kept in order
        mc.addAddButton(mc.addDisplay(QRectF(1920, 0, 1280, 800)), QRectF(3000, 20, 60, 60));
        mc.addButton(mc.addDisplay(std::nullopt), QRectF(10, 10, 50, 50)); // no frame: skipped
        const auto right = mc.addDisplay(QRectF(-1280, 0, 1280, 800));
        mc.addButton(right, QRectF(-300, 20, 100, 60), QStringLiteral("y"));
        mc.addButton(right, QRectF(-1200, 20, 100, 60), QStringLiteral("x"));

        AXThumbnails probe(mc.tree);
        const auto strips = probe.byDisplay();
        QCOMPARE(strips.size(), 2);
        QCOMPARE(strips[0].frame, QRectF(0, 0, 1920, 1080));
        QCOMPARE(titles(strips[0]), (QStringList{"a", "b1", "b2", "c"}));
        QCOMPARE(strips[1].frame, QRectF(-1280, 0, 1280, 800));
        QCOMPARE(titles(strips[1]), (QStringList{"x", "y"}));
    }

    void windowManagerThumbnailsAreCorrected_data() {
        QTest::addColumn<QRectF>("display");
        QTest::addColumn<QRectF>("expected");
        QTest::newRow("1920x1080") << QRectF(0, 0, 1920, 1080) << QRectF(414.4, 264.4, 171.2, 96.3);
        QTest::newRow("4:5 display")
            << QRectF(0, 0, 1000, 800) << QRectF(414.4, 264.4, 171.2, 136.96);
        QTest::newRow("no width") << QRectF(0, 0, 0, 800) << QRectF(414.4, 264.4, 171.2, 96.3);
    }
    void windowManagerThumbnailsAreCorrected() {
        QFETCH(QRectF, display);
        QFETCH(QRectF, expected);
        MissionControlTree mc;
        mc.open(); // the Dock shows the overview but lists no displays
        auto windowManager = FakeAccessibilityElement::make();
        mc.tree.setApplication(QStringLiteral("com.apple.WindowManager"), windowManager);
        const auto list = mc.addDisplay(display, windowManager);
        mc.addButton(list, QRectF(500, 300, 200, 100));

        AXThumbnails probe(mc.tree);
        QVERIFY(probe.mcDisplays().fromWindowManager);
        const auto strips = probe.byDisplay();
        QCOMPARE(strips.size(), 1);
        QCOMPARE(strips[0].thumbs[0].frame, expected);
        // The motion test keeps the reported rectangles.
        QCOMPARE(probe.allButtonFrames(), QList<QRectF>{QRectF(500, 300, 200, 100)});
    }

    void dockDisplaysWinOverTheWindowManager() {
        MissionControlTree mc;
        mc.addButton(mc.addDisplay(QRectF(0, 0, 1920, 1080)), QRectF(500, 300, 200, 100));
        auto windowManager = FakeAccessibilityElement::make();
        mc.tree.setApplication(QStringLiteral("com.apple.WindowManager"), windowManager);
        mc.addButton(mc.addDisplay(QRectF(0, 0, 1920, 1080), windowManager), QRectF(1, 1, 1, 1));

        AXThumbnails probe(mc.tree);
        QVERIFY(!probe.mcDisplays().fromWindowManager);
        QCOMPARE(probe.byDisplay()[0].thumbs[0].frame, QRectF(500, 300, 200, 100));
    }

    void framesEqualWithinTolerance() {
        const QList<QRectF> a{QRectF(10, 20, 200, 100), QRectF(300, 20, 200, 100)};
        const QList<QRectF> jitter{QRectF(10.5, 19.5, 200.5, 99.5), QRectF(300, 20.5, 200, 100)};
        QVERIFY(AXThumbnails::framesEqual(a, jitter, 1.0));
        QVERIFY(!AXThumbnails::framesEqual(a, jitter, 0.4));
        QVERIFY(!AXThumbnails::framesEqual(a, a.mid(0, 1), 1.0));
        QVERIFY(!AXThumbnails::framesEqual(
            a, {QRectF(10, 20, 200, 100), QRectF(300, 20, 201.5, 100)}, 1.0));
        QVERIFY(AXThumbnails::framesEqual({}, {}, 1.0));
    }

    void screenOfAStrip() {
        const QList<ScreenInfo> screens{kPrimary, kLeft};
        const auto strip = [](const QRectF& frame) { return AXDisplayThumbs{frame, {}}; };
        QCOMPARE(strip(QRectF(0, 0, 1920, 1080)).screen(screens, kPrimary), kPrimary);
        QCOMPARE(strip(QRectF(-1280, 200, 1280, 800)).screen(screens, kPrimary), kLeft);
        QCOMPARE(strip(QRectF(-1280, 1200, 1280, 800)).screen(screens, kPrimary), std::nullopt);

        // A mid point on the line between two screens belongs to the right-hand one of a
        // pair side by side, and to the upper one of a pair stacked, whatever their order.
        const ScreenInfo above{QStringLiteral("ABOVE"), QRectF(0, -1080, 1920, 1080),
                               QRectF(0, -1080, 1920, 1080)};
        const QRectF acrossTheLine(760, -100, 400, 200);
        QCOMPARE(strip(acrossTheLine).screen({kPrimary, above}, kPrimary), above);
        QCOMPARE(strip(acrossTheLine).screen({above, kPrimary}, kPrimary), above);
        const QRectF acrossTheSide(-100, 400, 200, 200);
        QCOMPARE(strip(acrossTheSide).screen({kLeft, kPrimary}, kPrimary), kPrimary);

        // Without a screen at the origin the main screen anchors the layout; without
        // that either there is no answer.
        const QList<ScreenInfo> shifted{kLeft};
        QCOMPARE(strip(kLeft.frame).screen(shifted, kLeft), kLeft);
        QCOMPARE(strip(kLeft.frame).screen(shifted, std::nullopt), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(OverviewProbeTest)
#include "OverviewProbeTest.moc"
