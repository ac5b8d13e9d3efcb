#include "core/overlay/CornerLabelLayout.h"
#include "core/overlay/MonitorWorkArea.h"
#include "core/overlay/ScreenInfo.h"
#include "platform/fake/FakeLabelTextMeasurer.h"

#include <QTest>

#include <cmath>

using namespace deskmark;

namespace {
// A 1000x700 visible frame below a 30-point top panel on a screen starting at x = 100.
const QRectF kVisible(100, 30, 1000, 700);
const QSizeF kSize(80, 20);

CornerLabelStyle style(CornerPosition position, double margin = 12) {
    CornerLabelStyle style;
    style.position = position;
    style.margin = margin;
    return style;
}
} // namespace

Q_DECLARE_METATYPE(CornerPosition)

class CornerLabelLayoutTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void eachPositionInTheVisibleFrame_data() {
        QTest::addColumn<CornerPosition>("position");
        QTest::addColumn<QPointF>("topLeft");
        // Left edge 112, centre 560, right 1008; top 42, middle 370, bottom 698.
        QTest::newRow("topLeft") << CornerPosition::TopLeft << QPointF(112, 42);
        QTest::newRow("top") << CornerPosition::Top << QPointF(560, 42);
        QTest::newRow("topRight") << CornerPosition::TopRight << QPointF(1008, 42);
        QTest::newRow("left") << CornerPosition::Left << QPointF(112, 370);
        QTest::newRow("right") << CornerPosition::Right << QPointF(1008, 370);
        QTest::newRow("bottomLeft") << CornerPosition::BottomLeft << QPointF(112, 698);
        QTest::newRow("bottom") << CornerPosition::Bottom << QPointF(560, 698);
        QTest::newRow("bottomRight") << CornerPosition::BottomRight << QPointF(1008, 698);
    }
    void eachPositionInTheVisibleFrame() {
        QFETCH(CornerPosition, position);
        QFETCH(QPointF, topLeft);
        QCOMPARE(CornerLabelLayout::place(kSize, position, 12, kVisible), QRectF(topLeft, kSize));
    }

    void paddingFollowsShapeAndVerticalPadding() {
        const FakeLabelTextMeasurer measurer;
        CornerLabelStyle look = style(CornerPosition::TopLeft);
        look.fontSize = 20;
        // "HH": 24 wide, glyphs 14 tall (0.7 × 20).
        look.vPadding = CornerVPadding::Narrow;
        auto capsule = CornerLabelLayout::layout("HH", look, kVisible, measurer);
        QCOMPARE(capsule.frame.height(), 14 + 2 * 6.0);               // 0.3 × 20 per side
        QCOMPARE(capsule.frame.width(), 24 + capsule.frame.height()); // half the height per side
        QCOMPARE(capsule.cornerRadius, capsule.frame.height() / 2);
        QCOMPARE(capsule.textOrigin.x(), capsule.frame.height() / 2);

        look.vPadding = CornerVPadding::Normal;
        look.shape = CornerShape::Square;
        auto square = CornerLabelLayout::layout("HH", look, kVisible, measurer);
        QCOMPARE(square.frame.height(), 14 + 2 * 10.0); // 0.5 × 20 per side
        QCOMPARE(square.frame.width(), 24 + 2 * 12.0);  // 0.6 × 20 per side
        QCOMPARE(square.cornerRadius, 0.0);
        QCOMPARE(square.textOrigin.x(), 12.0);
    }

    void heightFollowsTheGlyphsAndTheyStayCentred() {
        const FakeLabelTextMeasurer measurer;
        CornerLabelStyle look = style(CornerPosition::Bottom);
        look.fontSize = 13;
        const auto capitals = CornerLabelLayout::layout("HELLO", look, kVisible, measurer);
        const auto descenders = CornerLabelLayout::layout("Typography", look, kVisible, measurer);
        const auto lower = CornerLabelLayout::layout("ocean", look, kVisible, measurer);
        // Glyph heights 9.1, 11.7 and 6.5 are rounded up; 2 × 3.9 of padding each.
        QCOMPARE(capitals.frame.height(), 10 + 7.8);
        QCOMPARE(descenders.frame.height(), 12 + 7.8);
        QCOMPARE(lower.frame.height(), 7 + 7.8);
        // The middle of the glyphs' span is the middle of the label, whatever the line box.
        const struct {
            const char* text;
            CornerLabelLayout::Geometry geometry;
        } cases[] = {{"HELLO", capitals}, {"Typography", descenders}, {"ocean", lower}};
        for (const auto& c : cases) {
            const GlyphYBounds glyphs = measurer.glyphYBounds(c.text, 13, CornerWeight::Regular);
            const double glyphMiddle = c.geometry.textOrigin.y() + (glyphs.minY + glyphs.maxY) / 2;
            QCOMPARE(glyphMiddle, c.geometry.frame.height() / 2);
        }
    }

    // Offsets move right and up from the placed frame, and stop at the margin; a label
    // larger than the room ends at the right and top insets.
    void offsetsAreClampedInsideTheMargin_data() {
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<CornerPosition>("position");
        QTest::addColumn<QPointF>("offset");
        QTest::addColumn<QPointF>("topLeft");
        QTest::newRow("right and up")
            << kSize << CornerPosition::Bottom << QPointF(30, 40) << QPointF(590, 658);
        QTest::newRow("left") << kSize << CornerPosition::Bottom << QPointF(-30, 0)
                              << QPointF(530, 698);
        QTest::newRow("past bottom right")
            << kSize << CornerPosition::Bottom << QPointF(5000, -5000) << QPointF(1008, 698);
        QTest::newRow("past top left")
            << kSize << CornerPosition::Bottom << QPointF(-5000, 5000) << QPointF(112, 42);
        // 2000 x 1000 in a 1000 x 700 frame: right edge 1088, top edge 42.
        QTest::newRow("oversized")
            << QSizeF(2000, 1000) << CornerPosition::TopLeft << QPointF(0, 0) << QPointF(-912, 42);
    }
    void offsetsAreClampedInsideTheMargin() {
        QFETCH(QSizeF, size);
        QFETCH(CornerPosition, position);
        QFETCH(QPointF, offset);
        QFETCH(QPointF, topLeft);
        const QRectF base = CornerLabelLayout::place(size, position, 12, kVisible);
        QCOMPARE(CornerLabelLayout::offset(base, offset.x(), offset.y(), 12, kVisible),
                 QRectF(topLeft, size));
    }

    // The settings hold whatever the user or the file gave; the label still fits the
    // monitor, its window rectangle is computed without overflow, and values that are
    // not numbers count as the defaults.
    void extremeSettingsStayOnTheMonitor_data() {
        QTest::addColumn<double>("fontSize");
        QTest::addColumn<double>("margin");
        QTest::addColumn<double>("offset");
        QTest::addColumn<double>("expectedFontSize");
        QTest::addColumn<double>("expectedMargin");
        const double inf = qInf();
        // A quarter of the 700-point height at most; the margin to a quarter of 700 too.
        QTest::newRow("font size 10,000") << 1e4 << 12.0 << 0.0 << 175.0 << 12.0;
        QTest::newRow("font size 1e308") << 1e308 << 12.0 << 0.0 << 175.0 << 12.0;
        QTest::newRow("font size zero") << 0.0 << 12.0 << 0.0 << 1.0 << 12.0;
        QTest::newRow("negative font size") << -40.0 << 12.0 << 0.0 << 1.0 << 12.0;
        QTest::newRow("margin 1e10") << 13.0 << 1e10 << 0.0 << 13.0 << 175.0;
        QTest::newRow("margin -1e308") << 13.0 << -1e308 << 0.0 << 13.0 << 0.0;
        QTest::newRow("offsets 1e308") << 13.0 << 12.0 << 1e308 << 13.0 << 12.0;
        QTest::newRow("offsets -1e308") << 13.0 << 12.0 << -1e308 << 13.0 << 12.0;
        QTest::newRow("not numbers") << qQNaN() << qQNaN() << qQNaN() << 13.0 << 0.0;
        QTest::newRow("infinite") << inf << -inf << inf << 13.0 << 0.0;
    }
    void extremeSettingsStayOnTheMonitor() {
        QFETCH(double, fontSize);
        QFETCH(double, margin);
        QFETCH(double, offset);
        QFETCH(double, expectedFontSize);
        QFETCH(double, expectedMargin);
        const FakeLabelTextMeasurer measurer;
        for (const CornerShape shape : {CornerShape::Capsule, CornerShape::Square}) {
            CornerLabelStyle look = style(CornerPosition::BottomRight, margin);
            look.fontSize = fontSize;
            look.shape = shape;
            look.vPadding = CornerVPadding::Normal;
            look.offsetX = look.offsetY = offset;
            const auto geometry =
                CornerLabelLayout::layout("Deskmark project", look, kVisible, measurer);
            QCOMPARE(geometry.fontSize, expectedFontSize);
            const QRectF inset =
                kVisible.adjusted(expectedMargin, expectedMargin, -expectedMargin, -expectedMargin);
            const QRectF& frame = geometry.frame;
            QVERIFY2(inset.contains(frame) && kVisible.contains(QRectF(frame.toAlignedRect())),
                     qPrintable(QStringLiteral("%1,%2 %3x%4")
                                    .arg(frame.x())
                                    .arg(frame.y())
                                    .arg(frame.width())
                                    .arg(frame.height())));
            // Huge offsets push it to the insets; infinite ones count as none.
            const double moved = std::isfinite(offset) ? offset : 0;
            QCOMPARE(frame.left(), moved < 0 ? inset.left() : inset.right() - frame.width());
            QCOMPARE(moved > 0 ? frame.top() : frame.bottom(),
                     moved > 0 ? inset.top() : inset.bottom());
            QVERIFY(geometry.cornerRadius <= geometry.frame.height() / 2);
        }
    }

    // The visible frame of each monitor, from the space docks reserve along the root
    // window's edges: two 1280x800 monitors side by side above a third (2560 wide).
    void eachMonitorLosesOnlyTheReservationsThatReachIt() {
        using Strut = MonitorWorkArea::Strut;
        const QSize root(2560, 1600);
        const QRect left(0, 0, 1280, 800), right(1280, 0, 1280, 800), below(0, 800, 2560, 800);
        // A 28-pixel panel along the top of the left monitor only.
        const Strut topPanel = *Strut::fromPartial({0, 0, 28, 0, 0, 0, 0, 0, 0, 1279, 0, 0});
        QCOMPARE(MonitorWorkArea::available(left, {topPanel}, root, std::nullopt),
                 QRect(0, 28, 1280, 772));
        QCOMPARE(MonitorWorkArea::available(right, {topPanel}, root, std::nullopt), right);
        QCOMPARE(MonitorWorkArea::available(below, {topPanel}, root, std::nullopt), below);
        // The work area, one rectangle for all, would take the panel's rows from every
        // monitor: with struts known it is not used.
        const QRect workArea(0, 28, 2560, 1572);
        QCOMPARE(MonitorWorkArea::available(right, {topPanel}, root, workArea), right);

        // A dock along the bottom of the lower monitor and a 40-pixel bar down the right
        // edge of the upper right one, the older full-edge form on the left of all three.
        const Strut dock = *Strut::fromPartial({0, 0, 0, 48, 0, 0, 0, 0, 0, 0, 600, 1800});
        const Strut bar = *Strut::fromPartial({0, 40, 0, 0, 0, 0, 0, 799, 0, 0, 0, 0});
        const Strut legacy = *Strut::fromFull({10, 0, 0, 0}, root);
        const QList<Strut> all{topPanel, dock, bar, legacy};
        QCOMPARE(MonitorWorkArea::available(left, all, root, workArea), QRect(10, 28, 1270, 772));
        QCOMPARE(MonitorWorkArea::available(right, all, root, workArea), QRect(1280, 0, 1240, 800));
        QCOMPARE(MonitorWorkArea::available(below, all, root, workArea), QRect(10, 800, 2550, 752));

        // Without any strut the monitor's part of the work area counts; a work area that
        // misses the monitor, a reservation that would swallow it and short property
        // values count for nothing.
        QCOMPARE(MonitorWorkArea::available(left, {}, root, QRect(0, 30, 2560, 1570)),
                 QRect(0, 30, 1280, 770));
        QCOMPARE(MonitorWorkArea::available(left, {}, root, QRect(0, 900, 100, 100)), left);
        QCOMPARE(MonitorWorkArea::available(left, {}, root, std::nullopt), left);
        const Strut huge = *Strut::fromPartial({0, 0, 0xFFFFFFFF, 0, 0, 0, 0, 0, 0, 1279, 0, 0});
        QCOMPARE(MonitorWorkArea::available(left, {huge}, root, std::nullopt), left);
        QVERIFY(!Strut::fromPartial({0, 0, 28, 0}));
        QVERIFY(!Strut::fromFull({0, 0, 28}, root));
    }

    void aWindowBelongsToTheScreenHoldingMostOfIt() {
        const QList<ScreenInfo> screens{{"LEFT", QRectF(0, 0, 1280, 800), {}},
                                        {"RIGHT", QRectF(1280, 0, 1280, 800), {}}};
        QCOMPARE(ScreenInfo::screenOf(QRectF(1280, 0, 1280, 800), screens), "RIGHT");
        QCOMPARE(ScreenInfo::screenOf(QRectF(600, 100, 900, 300), screens), "LEFT");
        QCOMPARE(ScreenInfo::screenOf(QRectF(3000, 0, 100, 100), screens), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(CornerLabelLayoutTest)
#include "CornerLabelLayoutTest.moc"
