#include "ui/LabelFont.h"
#include "ui/QtLabelTextMeasurer.h"
#include "ui/QtOverviewLabelWindows.h"

#include <QFontMetricsF>
#include <QImage>
#include <QTest>

using namespace deskmark;

namespace {

OverviewLabelScreen labelsAt(const QRectF& frame) {
    OverviewLabelScreen::Box box{QRectF(40, 30, 200, 24), QRectF(3, 4, 194, 16), "Alpha",
                                 RgbColor{1, 0, 0}, RgbColor{1, 1, 1}};
    return OverviewLabelScreen{ScreenInfo{"screen", frame, frame}, {box}};
}

OverviewLabelStyle style() {
    OverviewLabelStyle style;
    style.fontSize = 14;
    return style;
}

} // namespace

class OverviewLabelWindowsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void measuredTextWrapsByCharacter() {
        const QtLabelTextMeasurer measurer;
        const double line = QFontMetricsF(LabelFont::font(14, CornerWeight::Medium)).height();
        const QString name(40, 'W'); // one word: only character wrapping can break it
        QCOMPARE(measurer.fittingHeight(name, 14, CornerWeight::Medium, 100, true), line);
        QVERIFY(measurer.fittingHeight(name, 14, CornerWeight::Medium, 100, false) >= 3 * line);
        QCOMPARE(measurer.fittingHeight("W", 14, CornerWeight::Medium, 100, false), line);
    }

    void windowsCoverTheirScreenAndIgnoreInput() {
        QtOverviewLabelWindows windows;
        windows.show({labelsAt(QRectF(0, 0, 1280, 800)), labelsAt(QRectF(1280, 0, 1280, 800))},
                     style(), false);
        QCOMPARE(windows.windows().size(), std::size_t(2));
        const OverviewLabelWindow& window = *windows.windows()[1];
        QTRY_COMPARE(window.geometry(), QRect(1280, 0, 1280, 800));
        QVERIFY(window.windowFlags().testFlags(
            Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint | Qt::WindowStaysOnTopHint |
            Qt::WindowTransparentForInput));
        QVERIFY(window.testAttribute(Qt::WA_TransparentForMouseEvents));
        QVERIFY(window.testAttribute(Qt::WA_ShowWithoutActivating));
        QCOMPARE(window.windowOpacity(), 1.0);

        // The box is drawn in its colour, square, where the layout put it; the rest is clear.
        const QImage image = windows.windows()[0]->grab().toImage();
        QCOMPARE(image.pixelColor(41, 31), QColor(Qt::red));
        QCOMPARE(image.pixelColor(239, 53), QColor(Qt::red));
        QCOMPARE(image.pixelColor(39, 31).alpha(), 0);
        QCOMPARE(image.pixelColor(41, 55).alpha(), 0);
    }

    void windowsFadeInAndOut() {
        QtOverviewLabelWindows windows;
        windows.show({labelsAt(QRectF(0, 0, 1280, 800))}, style(), true);
        const OverviewLabelWindow* window = windows.windows()[0].get();
        QVERIFY(window->windowOpacity() < 1.0);
        QTRY_COMPARE_WITH_TIMEOUT(window->windowOpacity(), 1.0, 2000);

        windows.hide();
        QVERIFY(window->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!window->isVisible(), 2000);
        QCOMPARE(windows.windows().size(), std::size_t(1)); // kept until the next show

        windows.hide();
        windows.show({}, style(), false);
        QVERIFY(windows.windows().empty());
    }
};

QTEST_MAIN(OverviewLabelWindowsTest)
#include "OverviewLabelWindowsTest.moc"
