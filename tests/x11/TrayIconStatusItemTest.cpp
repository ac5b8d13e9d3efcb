#include "platform/linux/TrayIconStatusItem.h"
#include "platform/linux/StatusItemFactory.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QImage>
#include <QMenu>
#include <QProcess>
#include <QScreen>
#include <QSystemTrayIcon>
#include <QTest>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

using namespace deskmark;

namespace {
// Pixels whose colour is the palette's text colour, fully or partly (anti-aliased).
struct TextCoverage {
    int solid = 0;
    int blended = 0;
};

TextCoverage textCoverage(const QImage& image) {
    const QColor text = QGuiApplication::palette().color(QPalette::WindowText);
    const QColor plate = QGuiApplication::palette().color(QPalette::Window);
    TextCoverage coverage;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() < 255)
                continue;
            if (pixel.rgb() == text.rgb())
                ++coverage.solid;
            else if (pixel.rgb() != plate.rgb())
                ++coverage.blended;
        }
    return coverage;
}

// Qt's own widget for the tray icon.
QWidget* trayWidget() {
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets)
        if (widget->objectName() == "QSystemTrayIconSys")
            return widget;
    return nullptr;
}

// The WM_CLASS names of the X windows that hold `window`, up to the root.
QStringList windowClasses(WId window) {
    xcb_connection_t* connection =
        qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    QStringList classes;
    for (xcb_window_t current = xcb_window_t(window);;) {
        xcb_query_tree_reply_t* tree =
            xcb_query_tree_reply(connection, xcb_query_tree(connection, current), nullptr);
        if (!tree)
            break;
        current = tree->parent;
        const bool atRoot = tree->parent == tree->root || tree->parent == XCB_WINDOW_NONE;
        free(tree);
        if (atRoot)
            break;
        xcb_get_property_reply_t* property = xcb_get_property_reply(
            connection,
            xcb_get_property(connection, 0, current, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 64),
            nullptr);
        if (property) {
            const QByteArray value(static_cast<const char*>(xcb_get_property_value(property)),
                                   xcb_get_property_value_length(property));
            for (const QByteArray& name : value.split('\0'))
                if (!name.isEmpty())
                    classes << QString::fromLatin1(name);
            free(property);
        }
    }
    return classes;
}
} // namespace

class TrayIconStatusItemTest : public QObject {
    Q_OBJECT
    QProcess tray_;

private Q_SLOTS:
    void factoryFallsBackWithoutAWatcher() {
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: status item: tray icon (no "
                                           "StatusNotifierWatcher on the session bus)");
        const std::unique_ptr<StatusItem> item = createStatusItem();
        QVERIFY(qobject_cast<TrayIconStatusItem*>(item.get()));
        QVERIFY(!item->screenName().has_value()); // no tray to sit in yet
    }

    void titleIsDrawnToFitTheText_data() {
        QTest::addColumn<int>("height");
        QTest::newRow("small panel") << 16;
        QTest::newRow("tall panel") << 48;
    }
    void titleIsDrawnToFitTheText() {
        QFETCH(int, height);
        const QImage work = TrayIconStatusItem::titlePixmap("Work", height).toImage();
        QCOMPARE(work.height(), height);
        QFont font = QGuiApplication::font();
        font.setPixelSize(qRound(height * 0.62));
        QVERIFY(work.width() > QFontMetricsF(font).horizontalAdvance("Work"));
        QVERIFY(TrayIconStatusItem::titlePixmap("Work and more", height).width() > work.width());
        // A short name still makes an icon at least as wide as it is high.
        QVERIFY(TrayIconStatusItem::titlePixmap("A", height).width() >= height);

        const TextCoverage coverage = textCoverage(work);
        QVERIFY(coverage.solid > 0);
        QVERIFY(coverage.blended > 0);              // anti-aliased glyph edges
        QCOMPARE(work.pixelColor(0, 0).alpha(), 0); // rounded corners
        const TextCoverage japanese =
            textCoverage(TrayIconStatusItem::titlePixmap("仕事", height).toImage());
        QVERIFY(japanese.solid + japanese.blended > 10);
    }

    // The tray starts after the item, as when a panel restarts: the icon moves into it and
    // its slot is as wide as the title.
    void iconIsEmbeddedInATrayThatComesLater() {
        TrayIconStatusItem item;
        QMenu menu;
        menu.addAction("Settings…");
        item.setMenu(&menu);
        item.setTitle("Work");
        QCOMPARE(item.title(), "Work");

        tray_.start("trayer", {"--edge", "top", "--align", "right", "--widthtype", "request",
                               "--height", "24", "--SetDockType", "true"});
        QVERIFY(tray_.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(QSystemTrayIcon::isSystemTrayAvailable(), 10000);
        QTRY_VERIFY_WITH_TIMEOUT(item.screenName().has_value(), 10000);
        QCOMPARE(*item.screenName(), "LEFT"); // trayer sits on the first monitor

        QWidget* slot = trayWidget();
        QVERIFY(slot);
        QTRY_VERIFY_WITH_TIMEOUT(windowClasses(slot->winId()).contains("trayer"), 10000);
        QTRY_VERIFY(slot->width() > 2 * slot->height());
        const int workWidth = slot->width();
        item.setTitle("Quarterly report");
        QTRY_VERIFY(slot->width() > workWidth);
    }

    void cleanupTestCase() {
        tray_.terminate();
        tray_.waitForFinished();
    }
};

QTEST_MAIN(TrayIconStatusItemTest)
#include "TrayIconStatusItemTest.moc"
