#include "platform/linux/TrayIconStatusItem.h"
#include "platform/linux/StatusNotifierItem.h"
#include "platform/linux/SwitchingStatusItem.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QFontMetricsF>
#include <QImage>
#include <QMenu>
#include <QProcess>
#include <QScreen>
#include <QSignalSpy>
#include <QSystemTrayIcon>
#include <QTest>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

using namespace deskmark;

namespace {
// Opaque pixels by lightness: how many are light (drawn on a dark panel) and dark.
struct Ink {
    int light = 0;
    int dark = 0;
};

Ink inkOf(const QImage& image) {
    Ink ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() < 128)
                continue;
            if (qGray(pixel.rgb()) > 200)
                ++ink.light;
            else if (qGray(pixel.rgb()) < 60)
                ++ink.dark;
        }
    return ink;
}

QIcon squareIcon() {
    QPixmap pixmap(64, 64);
    pixmap.fill(Qt::black);
    return QIcon(pixmap);
}

// The panel's side: a StatusNotifierWatcher that takes every item.
class Watcher : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString&) {}
};

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
    // A panel whose watcher comes after Deskmark: the tray icon becomes a
    // StatusNotifierItem with the same title, and a tray icon again when the watcher goes.
    void followsTheWatcherOnTheBus() {
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: status item: tray icon (no "
                                           "StatusNotifierWatcher on the session bus)");
        SwitchingStatusItem item;
        QVERIFY(qobject_cast<TrayIconStatusItem*>(item.current()));
        QVERIFY(!item.screenName().has_value()); // no tray to sit in yet
        QSignalSpy placed(&item, &StatusItem::placementChanged);
        QMenu menu;
        menu.addAction("Settings…");
        item.setMenu(&menu);
        item.setIcon(squareIcon());
        item.setTitle("Work");

        QDBusConnection panel =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("panel"));
        Watcher watcher;
        QVERIFY(panel.registerObject("/StatusNotifierWatcher", &watcher,
                                     QDBusConnection::ExportAllSlots));
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: status item: StatusNotifierItem (a "
                                           "StatusNotifierWatcher appeared)");
        QVERIFY(panel.registerService("org.kde.StatusNotifierWatcher"));
        QTRY_VERIFY(qobject_cast<StatusNotifierItem*>(item.current()));
        QCOMPARE(placed.size(), 1);
        auto* sni = static_cast<StatusNotifierItem*>(item.current());
        QDBusMessage get = QDBusMessage::createMethodCall(sni->serviceName(), "/StatusNotifierItem",
                                                          "org.freedesktop.DBus.Properties", "Get");
        get << QStringLiteral("org.kde.StatusNotifierItem") << QStringLiteral("XAyatanaLabel");
        const QDBusMessage label = panel.call(get, QDBus::BlockWithGui);
        QCOMPARE(label.arguments().value(0).value<QDBusVariant>().variant().toString(), "Work");
        QCOMPARE(sni->iconName(), "io.github.deskmark.Deskmark-symbolic");

        // A panel that restarts is back before the item gives up on it.
        QVERIFY(panel.unregisterService("org.kde.StatusNotifierWatcher"));
        QVERIFY(panel.registerService("org.kde.StatusNotifierWatcher"));
        QTest::qWait(500);
        QCOMPARE(item.current(), sni);
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: status item: tray icon (the "
                                           "StatusNotifierWatcher went away)");
        QVERIFY(panel.unregisterService("org.kde.StatusNotifierWatcher"));
        QTRY_VERIFY_WITH_TIMEOUT(qobject_cast<TrayIconStatusItem*>(item.current()), 6000);
        QCOMPARE(item.current()->title(), "Work");
        QCOMPARE(placed.size(), 2);
    }

    void slotImageFitsAndStandsOut_data() {
        QTest::addColumn<int>("height");
        QTest::newRow("small panel") << 16;
        QTest::newRow("tall panel") << 48;
    }
    void slotImageFitsAndStandsOut() {
        QFETCH(int, height);
        const QColor darkPanel(0x30, 0x30, 0x30);
        const QColor lightPanel(0xe8, 0xe8, 0xe8);
        const QImage work = TrayIconStatusItem::slotImage(squareIcon(), "Work", height, darkPanel);
        QCOMPARE(work.height(), height);
        QFont font = QGuiApplication::font();
        font.setPixelSize(qRound(height * 0.56));
        QVERIFY(work.width() > QFontMetricsF(font).horizontalAdvance("Work") + height * 0.75);
        QVERIFY(TrayIconStatusItem::slotImage(squareIcon(), "Work and more", height, darkPanel)
                    .width() > work.width());
        // The icon alone fills a square slot.
        QCOMPARE(TrayIconStatusItem::slotImage(squareIcon(), "", height, darkPanel).size(),
                 QSize(height, height));

        // Light on a dark panel, dark on a light one; the rest is see-through.
        const Ink onDark = inkOf(work);
        QVERIFY(onDark.light > height * height / 2);
        QCOMPARE(onDark.dark, 0);
        QCOMPARE(work.pixelColor(0, 0).alpha(), 0);
        const Ink onLight =
            inkOf(TrayIconStatusItem::slotImage(squareIcon(), "仕事", height, lightPanel));
        QCOMPARE(onLight.light, 0);
        QVERIFY(onLight.dark > height * height / 2);
    }

    void panelColourIsTheMostCommonOne() {
        QImage panel(30, 10, QImage::Format_RGB32);
        panel.fill(QColor(0x20, 0x40, 0x60));
        for (int x = 0; x < 12; ++x)
            panel.setPixelColor(x, 5, Qt::white);
        QCOMPARE(TrayIconStatusItem::dominantColor(panel), QColor(0x20, 0x40, 0x60));
        QVERIFY(!TrayIconStatusItem::dominantColor(QImage()).isValid());
    }

    // The tray starts after the item, as when a panel restarts: the icon moves into it, its
    // slot is as wide as the title, and on this dark panel it is drawn light.
    void iconIsEmbeddedInATrayThatComesLater() {
        TrayIconStatusItem item;
        QMenu menu;
        menu.addAction("Settings…");
        item.setMenu(&menu);
        item.setIcon(squareIcon());
        item.setTitle("Work");
        QCOMPARE(item.title(), "Work");

        tray_.start("trayer", {"--edge", "top", "--align", "right", "--widthtype", "request",
                               "--height", "24", "--SetDockType", "true", "--transparent", "true",
                               "--alpha", "0", "--tint", "0x202020"});
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

        const auto onScreen = [slot] {
            const QPoint origin = slot->mapToGlobal(QPoint(0, 0));
            return slot->screen()
                ->grabWindow(0, origin.x(), origin.y(), slot->width(), slot->height())
                .toImage();
        };
        // The item samples the panel a moment after it is placed, then draws again: on a
        // loaded machine that takes longer than QTRY's usual five seconds.
        QTRY_VERIFY_WITH_TIMEOUT(inkOf(onScreen()).light > slot->height() * 4, 15000);
        QVERIFY(qGray(TrayIconStatusItem::dominantColor(onScreen()).rgb()) < 60);
    }

    void cleanupTestCase() {
        tray_.terminate();
        tray_.waitForFinished();
    }
};

QTEST_MAIN(TrayIconStatusItemTest)
#include "TrayIconStatusItemTest.moc"
