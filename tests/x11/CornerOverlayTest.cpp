#include "x11/CornerLabelSession.h"
#include "x11/X11TestTools.h"
#include "core/overlay/CornerLabelLayout.h"
#include "core/overlay/CornerOverlayController.h"
#include "core/spaces/SpaceStore.h"
#include "platform/linux/X11WindowServer.h"
#include "ui/CornerLabelView.h"
#include "ui/QtCornerLabelWindows.h"
#include "ui/QtLabelTextMeasurer.h"
#include "ui/QtScreenProvider.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include <cstring>

using namespace deskmark;

namespace {

const QColor kRed(0xCC, 0x22, 0x22);
const QColor kGreen(0x00, 0xFF, 0x00);
const QColor kBlue(0x22, 0x55, 0xCC);
constexpr double kFontSize = 40;

int countColour(const QImage& image, const QRect& area, const QColor& colour) {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            count += image.pixelColor(x, y).rgb() == colour.rgb() ? 1 : 0;
    }
    return count;
}

// Stores, the X11 Space source and the corner overlay over real windows. Desktop 1 is
// "Alpha" (red, white text); the others start unnamed. Labels use a 40-pixel font.
struct Session : CornerLabelSession {
    Session() {
        QObject::connect(&server, &WindowServer::activeSpaceChanged, &server,
                         [this] { controller.refresh(); });
        red = addPreset("#CC2222", "#FFFFFF");
        projects.set("Alpha", red, "desktop-1");
        settings.setCornerBgOpacity(1.0);
        // Large enough for strokes with fully covered pixels in the text colour.
        settings.setCornerFontSize(kFontSize);
    }

    QString addPreset(const QString& bg, const QString& text) {
        ColorPreset preset = presets.addPreset();
        preset.bgHex = bg;
        preset.textHex = text;
        presets.updatePreset(preset);
        return preset.id;
    }
    bool onDesktop(int index) const {
        const auto displays = spaces.displays();
        return !displays.isEmpty() &&
               displays.first().currentUUID == QStringLiteral("desktop-%1").arg(index + 1);
    }
    QRectF expected(int index, const QString& text, CornerPosition position) const {
        return CornerLabelSession::expected(index, text, position, kFontSize);
    }

    QString red;
};

// A window of another program: a dock along the top of the left monitor that reserves
// its rows with a partial strut, or a plain white window to see labels over.
class OtherWindow {
public:
    OtherWindow(const QRect& area, bool dock) : connection_(xcb_connect(nullptr, nullptr)) {
        const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        window_ = xcb_generate_id(connection_);
        // The plain window stays where it is put, out of the window manager's hands.
        const uint32_t attributes[] = {screen->white_pixel, dock ? 0u : 1u};
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen->root,
                          qint16(area.x()), qint16(area.y()), quint16(area.width()),
                          quint16(area.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          screen->root_visual, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT,
                          attributes);
        if (dock) {
            const uint32_t type = atom("_NET_WM_WINDOW_TYPE_DOCK");
            xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_,
                                atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &type);
            reserveTop(area.height(), area.width());
        }
        xcb_map_window(connection_, window_);
        xcb_flush(connection_);
    }
    // Closing the connection takes the window away.
    ~OtherWindow() { xcb_disconnect(connection_); }
    OtherWindow(const OtherWindow&) = delete;
    OtherWindow& operator=(const OtherWindow&) = delete;

    void reserveTop(int rows, int width) {
        const uint32_t strut[12] = {0, 0, uint32_t(rows),      0, 0, 0, 0,
                                    0, 0, uint32_t(width - 1), 0, 0};
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_,
                            atom("_NET_WM_STRUT_PARTIAL"), XCB_ATOM_CARDINAL, 32, 12, strut);
        xcb_flush(connection_);
    }

private:
    xcb_atom_t atom(const char* name) {
        xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(
            connection_, xcb_intern_atom(connection_, 0, quint16(strlen(name)), name), nullptr);
        const xcb_atom_t value = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
        std::free(reply);
        return value;
    }

    xcb_connection_t* connection_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

// Whether every pixel around the label is the label's red background, its white text, a
// blend of the two, or the white window below: anything darker is the black that stands
// in for what lies below a window without compositing.
bool onlyRedAndWhiteAround(const QImage& shot, const QRectF& frame) {
    const QRect area = frame.toAlignedRect().adjusted(-2, -2, 2, 2);
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QColor pixel = shot.pixelColor(x, y);
            if (pixel.red() < kRed.red() || pixel.green() < kRed.green() ||
                pixel.blue() < kRed.blue()) {
                qWarning("dark pixel %s at %d,%d", qPrintable(pixel.name()), x, y);
                return false;
            }
        }
    }
    return true;
}

// A point of the label's background: halfway into the capsule's rounded left end, well
// clear of the text.
QPoint backgroundPoint(const QRectF& frame) {
    return QPointF(frame.left() + frame.height() / 4, frame.center().y()).toPoint();
}

} // namespace

class CornerOverlayTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        // Every case starts on the first desktop.
        X11WindowServer server;
        QVERIFY(server.requestDesktop(0));
        const SpaceStore spaces(server);
        QTRY_COMPARE(spaces.displays().value(0).currentUUID, std::optional<QString>("desktop-1"));
    }

    void aNamedDesktopIsLabelledOnBothMonitors() {
        Session s;
        s.controller.refresh();
        for (int i = 0; i < 2; ++i) {
            CornerLabelView* view = s.view(i);
            QVERIFY(view);
            QVERIFY(QTest::qWaitForWindowExposed(view));
            const QRectF frame = s.expected(i, "Alpha", CornerPosition::Bottom);
            QCOMPARE(view->geometry(), frame.toAlignedRect());
            QVERIFY(view->windowFlags().testFlags(
                Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint |
                Qt::WindowStaysOnTopHint | Qt::WindowTransparentForInput));
            QVERIFY(view->testAttribute(Qt::WA_TransparentForMouseEvents));
            QVERIFY(view->testAttribute(Qt::WA_ShowWithoutActivating));
            // The window is cut to the capsule: its corners are not part of it.
            QVERIFY(view->mask().contains(view->rect().center()));
            QVERIFY(!view->mask().contains(QPoint(0, 0)));
            QVERIFY(!view->mask().contains(QPoint(view->width() - 1, view->height() - 1)));
        }
        const QRectF left = s.expected(0, "Alpha", CornerPosition::Bottom);
        const QRectF right = s.expected(1, "Alpha", CornerPosition::Bottom);
        QVERIFY(right.left() > 1280); // on the right monitor's own visible frame
        QImage shot;
        QTRY_VERIFY_WITH_TIMEOUT(
            (shot = screenshot(), shot.pixelColor(backgroundPoint(left)) == kRed &&
                                      shot.pixelColor(backgroundPoint(right)) == kRed),
            5000);
        QVERIFY(countColour(shot, left.toAlignedRect(), Qt::white) > 10); // the text
        QVERIFY(countColour(shot, right.toAlignedRect(), Qt::white) > 10);
        QVERIFY(shot.pixelColor(backgroundPoint(left) - QPoint(int(left.height()), 0)) != kRed);
    }

    void desktopSwitchesRelabelAndUnnamedDesktopsShowNothing() {
        Session s;
        s.projects.set("Gamma", s.addPreset("#2255CC", "#FFFFFF"), "desktop-3");
        s.controller.refresh();
        QVERIFY(QTest::qWaitForWindowExposed(s.view(0)));
        const QRectF alpha = s.expected(0, "Alpha", CornerPosition::Bottom);

        QCOMPARE(QProcess::execute("wmctrl", {"-s", "2"}), 0);
        QTRY_VERIFY(s.onDesktop(2));
        QTRY_COMPARE(s.view(0)->label().text, QStringLiteral("Gamma"));
        QCOMPARE(s.view(1)->label().text, QStringLiteral("Gamma"));
        const QRectF gamma = s.expected(1, "Gamma", CornerPosition::Bottom);
        QCOMPARE(s.view(1)->geometry(), gamma.toAlignedRect()); // the kept window is moved
        QTRY_VERIFY_WITH_TIMEOUT(screenshot().pixelColor(backgroundPoint(gamma)) == kBlue, 5000);

        // Desktop 2 has no name: no label and no stand-in text, the windows are kept.
        CornerLabelView* kept = s.view(0);
        QCOMPARE(QProcess::execute("wmctrl", {"-s", "1"}), 0);
        QTRY_VERIFY(s.onDesktop(1));
        QTRY_VERIFY(!s.view(0)->isVisible());
        QVERIFY(!s.view(1)->isVisible());
        QCOMPARE(s.view(0), kept);
        QImage shot;
        QTRY_VERIFY_WITH_TIMEOUT(
            (shot = screenshot(), shot.pixelColor(backgroundPoint(gamma)) != kBlue &&
                                      shot.pixelColor(backgroundPoint(alpha)) != kRed),
            5000);

        QCOMPARE(QProcess::execute("wmctrl", {"-s", "0"}), 0);
        QTRY_VERIFY(s.view(0)->isVisible());
        QCOMPARE(s.view(0)->label().text, QStringLiteral("Alpha"));
        QCOMPARE(s.view(0), kept);
    }

    void opacityChangesTheBackgroundOnly() {
        Session s;
        s.projects.set("Alpha", s.addPreset("#CC2222", "#00FF00"), "desktop-1");
        s.controller.refresh();
        CornerLabelView* view = s.view(0);
        QVERIFY(QTest::qWaitForWindowExposed(view));
        const QImage opaque = view->grab().toImage();
        const int textPixels = countColour(opaque, opaque.rect(), kGreen);
        QVERIFY(textPixels > 10);

        s.settings.setCornerBgOpacity(0.4);
        s.controller.updateOpacityOnly();
        QCOMPARE(view->background().alpha(), qRound(0.4 * 255));
        QCOMPARE(view->background().rgb(), kRed.rgb());
        // Every pixel that the text covered fully keeps exactly the text colour.
        const QImage faint = view->grab().toImage();
        QCOMPARE(faint.size(), opaque.size());
        int kept = 0;
        for (int y = 0; y < opaque.height(); ++y) {
            for (int x = 0; x < opaque.width(); ++x) {
                if (opaque.pixelColor(x, y).rgba() == kGreen.rgba())
                    kept += faint.pixelColor(x, y).rgba() == kGreen.rgba() ? 1 : 0;
            }
        }
        QCOMPARE(kept, textPixels);
        const QPoint bg = backgroundPoint(QRectF(QPointF(), view->label().frame.size()));
        QCOMPARE(faint.pixelColor(bg).alpha(), qRound(0.4 * 255));
        // On screen the text keeps its colour too.
        const QRectF frame = view->label().frame;
        QTRY_VERIFY_WITH_TIMEOUT(screenshot().pixelColor(backgroundPoint(frame)) != kRed, 5000);
        QVERIFY(countColour(screenshot(), frame.toAlignedRect(), kGreen) > 10);
    }

    // A hand-edited settings file may hold an opacity beyond 0 to 1 (a percentage, say):
    // the label is drawn with the nearest opacity that exists, never without a background.
    void opacityOutsideZeroToOneIsDrawnAsTheNearestEnd() {
        Session s;
        s.settings.setCornerBgOpacity(80);
        s.projects.set("Alpha", s.addPreset("#CC2222", "#00FF00"), "desktop-1");
        s.controller.refresh();
        CornerLabelView* view = s.view(0);
        QCOMPARE(view->background(), kRed);
        s.settings.setCornerBgOpacity(-1);
        s.controller.updateOpacityOnly();
        QCOMPARE(view->background().rgb(), kRed.rgb());
        QCOMPARE(view->background().alpha(), 0);
    }

    void topRowLabelsFadeOutForTheOverviewAndBackIn() {
        Session s;
        s.settings.setCornerPositionRaw("topRight");
        s.settings.setOverride(CornerOverrideItem::Position, true, s.display(1));
        s.settings.setCornerPosition(CornerPosition::BottomLeft, s.display(1));
        s.controller.refresh();
        QVERIFY(QTest::qWaitForWindowExposed(s.view(0)));
        QVERIFY(QTest::qWaitForWindowExposed(s.view(1)));

        s.controller.setMcDisplays({s.display(0), s.display(1)});
        s.controller.applyMissionControlVisibility();
        QTRY_VERIFY(!s.view(0)->isVisible());
        QCOMPARE(s.view(0)->windowOpacity(), 0.0);
        QVERIFY(s.view(1)->isVisible()); // bottom row: stays
        // A refresh while the overview is open leaves it down.
        s.projects.setName("Alpha 2", "desktop-1");
        s.controller.refresh();
        QCOMPARE(s.view(0)->label().text, QStringLiteral("Alpha 2"));
        QVERIFY(!s.view(0)->isVisible());

        s.controller.setMcDisplays({});
        s.controller.applyMissionControlVisibility();
        QVERIFY(s.view(0)->isVisible());
        QTRY_COMPARE(s.view(0)->windowOpacity(), 1.0);
    }

    void theGlyphsAreCentredWhateverTheirShape_data() {
        QTest::addColumn<QString>("name");
        QTest::newRow("capitals") << "HELLO";
        QTest::newRow("descenders") << "gjpqy";
        QTest::newRow("japanese") << "日本語";
    }
    void theGlyphsAreCentredWhateverTheirShape() {
        QFETCH(QString, name);
        Session s;
        s.projects.set(name, s.addPreset("#000000", "#FFFFFF"), "desktop-1");
        s.controller.refresh();
        CornerLabelView* view = s.view(0);
        QVERIFY(QTest::qWaitForWindowExposed(view));
        // The rows that hold ink: anything brighter than the black background.
        const QImage image = view->grab().toImage();
        int top = image.height(), bottom = -1;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y).lightness() > 60) {
                    top = std::min(top, y);
                    bottom = std::max(bottom, y);
                }
            }
        }
        QVERIFY(bottom >= top);
        const double gapAbove = top;
        const double gapBelow = image.height() - 1 - bottom;
        QVERIFY2(std::abs(gapAbove - gapBelow) <= 2.0,
                 qPrintable(QStringLiteral("%1 above, %2 below").arg(gapAbove).arg(gapBelow)));
    }

    // A dock's partial strut along the top of the left monitor only: the left monitor's
    // label moves below it, the right one's stays, and both follow when it changes.
    void labelsKeepClearOfTheDocksOnTheirOwnMonitor() {
        Session s;
        s.settings.setCornerPositionRaw("top");
        QObject::connect(&s.watcher, &X11ScreenWatcher::reservedAreaChanged, &s.watcher,
                         [&s] { s.controller.refresh(); });
        s.controller.refresh();
        QCOMPARE(s.view(0)->label().frame.top(), 12.0);
        QCOMPARE(s.view(1)->label().frame.top(), 12.0);
        {
            OtherWindow dock(QRect(0, 0, 1280, 28), true);
            QTRY_COMPARE(s.view(0)->label().frame.top(), 28 + 12.0);
            QCOMPARE(s.view(1)->label().frame.top(), 12.0);
            QCOMPARE(s.view(0)->label().frame, s.expected(0, "Alpha", CornerPosition::Top));
            dock.reserveTop(60, 1280);
            QTRY_COMPARE(s.view(0)->label().frame.top(), 60 + 12.0);
            QCOMPARE(s.view(1)->label().frame.top(), 12.0);
            QTRY_VERIFY_WITH_TIMEOUT(
                screenshot().pixelColor(backgroundPoint(s.view(0)->label().frame)) == kRed, 5000);
        }
        QTRY_COMPARE(s.view(0)->label().frame.top(), 12.0);
    }

    // Over a white window: without a compositing manager the label is opaque and no pixel
    // of its rim or edge is darkened; once one starts, the same label is translucent.
    void labelsFollowTheCompositingManager() {
        if (QStandardPaths::findExecutable("xcompmgr").isEmpty())
            QSKIP("xcompmgr is not installed");
        Session s;
        s.settings.setCornerBgOpacity(0.8);
        QObject::connect(&s.watcher, &X11ScreenWatcher::compositingChanged, &s.watcher, [&s] {
            s.controller.setCompositing(s.watcher.compositing());
            s.controller.refresh();
        });
        QVERIFY(!s.watcher.compositing());
        s.controller.setCompositing(false);
        OtherWindow below(QRect(0, 500, 2560, 300), false);
        s.settings.setOverride(CornerOverrideItem::Shape, true, s.display(1));
        s.settings.setCornerShape(CornerShape::Square, s.display(1));
        s.controller.refresh();
        for (int i = 0; i < 2; ++i) {
            const QRectF frame = s.view(i)->label().frame;
            QTRY_VERIFY_WITH_TIMEOUT(screenshot().pixelColor(backgroundPoint(frame)) == kRed, 5000);
            QVERIFY(onlyRedAndWhiteAround(screenshot(), frame));
        }

        QProcess compositor;
        compositor.start("xcompmgr", {});
        QVERIFY(compositor.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(s.watcher.compositing(), 10000);
        QVERIFY(s.view(0)->label().blended);
        // 80 % red over white.
        const QRectF frame = s.view(0)->label().frame;
        QTRY_VERIFY_WITH_TIMEOUT(std::abs(screenshot().pixelColor(backgroundPoint(frame)).green() -
                                          qRound(0.8 * kRed.green() + 0.2 * 255)) <= 2,
                                 10000);
        compositor.terminate();
        compositor.waitForFinished();
        QTRY_VERIFY_WITH_TIMEOUT(!s.watcher.compositing(), 10000);
        QVERIFY(!s.view(0)->label().blended);
    }

    // The window is cut to every pixel its antialiased shape touches, and the cut is
    // worked out from the geometry: a label the size of a wall costs no more than a small
    // one (its window stays off screen here: it is faded out before it is first set).
    // Without blending, exactly the pixels whose centres lie inside the shape.
    void theMaskHoldsThePixelsTheShapeTouches_data() {
        QTest::addColumn<QRectF>("frame");
        QTest::addColumn<double>("radius");
        QTest::addColumn<bool>("blended");
        for (const bool blended : {true, false}) {
            const char* way = blended ? "blended" : "unblended";
            QTest::addRow("%s capsule", way) << QRectF(10, 10, 120, 36) << 18.0 << blended;
            QTest::addRow("%s capsule at a fractional position", way)
                << QRectF(10.3, 10.6, 97.5, 29.2) << 14.6 << blended;
            QTest::addRow("%s square", way) << QRectF(10.5, 10.25, 80, 30) << 0.0 << blended;
            QTest::addRow("%s tall capsule", way) << QRectF(10, 10.5, 30, 90) << 15.0 << blended;
            QTest::addRow("%s wall-sized capsule", way)
                << QRectF(0, 0, 30000, 16000) << 8000.0 << blended;
        }
    }
    void theMaskHoldsThePixelsTheShapeTouches() {
        QFETCH(QRectF, frame);
        QFETCH(double, radius);
        QFETCH(bool, blended);
        CornerLabelView view;
        view.fadeTo(false, 0);
        QElapsedTimer timer;
        timer.start();
        view.setLabel(CornerLabel{"x", 13, CornerWeight::Regular, {}, frame, radius, {}, blended},
                      {}, 1);
        QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
        const QRegion mask = view.mask();
        QVERIFY(!mask.contains(QPoint(0, 0)) || radius == 0);
        if (blended)
            QCOMPARE(mask.boundingRect(), view.rect());
        if (frame.width() > 1000)
            return;
        QPainterPath shape;
        shape.addRoundedRect(QRectF(frame.topLeft() - view.geometry().topLeft(), frame.size()),
                             radius, radius);
        if (!blended) {
            for (int y = -1; y <= view.height(); ++y) {
                for (int x = -1; x <= view.width(); ++x)
                    QVERIFY2(mask.contains(QPoint(x, y)) ==
                                 shape.contains(QPointF(x + 0.5, y + 0.5)),
                             qPrintable(QStringLiteral("%1,%2").arg(x).arg(y)));
            }
            return;
        }
        // The antialiased shape: a pixel it covers clearly is in the mask, and a pixel in
        // the mask is covered, or next to one that is (coverage below 1/255 rounds away).
        QImage coverage(view.size(), QImage::Format_Alpha8);
        coverage.fill(0);
        QPainter painter(&coverage);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(shape, Qt::black);
        painter.end();
        const auto alpha = [&](int x, int y) {
            return coverage.rect().contains(x, y) ? coverage.pixelColor(x, y).alpha() : 0;
        };
        for (int y = 0; y < coverage.height(); ++y) {
            for (int x = 0; x < coverage.width(); ++x) {
                const QString at = QStringLiteral("%1,%2").arg(x).arg(y);
                if (alpha(x, y) >= 8)
                    QVERIFY2(mask.contains(QPoint(x, y)), qPrintable(at));
                if (mask.contains(QPoint(x, y)))
                    QVERIFY2(alpha(x, y) + alpha(x - 1, y) + alpha(x + 1, y) + alpha(x, y - 1) +
                                     alpha(x, y + 1) >
                                 0,
                             qPrintable(at));
            }
        }
    }
};

QTEST_MAIN(CornerOverlayTest)
#include "CornerOverlayTest.moc"
