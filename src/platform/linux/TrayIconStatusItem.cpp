#include "platform/linux/TrayIconStatusItem.h"

#include <QApplication>
#include <QCursor>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QMenu>
#include <QPainter>
#include <QPalette>
#include <QResizeEvent>
#include <QScreen>

#include <cmath>

namespace deskmark {

namespace {
// Qt's slot size before a tray has sized the icon.
constexpr int kDefaultHeight = 22;

bool isTrayWidget(const QObject* object) {
    return object->isWidgetType() && object->objectName() == QLatin1String("QSystemTrayIconSys");
}

// The widget in which Qt draws the tray icon, once the icon is in a tray. Deskmark shows
// one tray icon, so the first is ours.
QWidget* trayWidget() {
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets)
        if (isTrayWidget(widget))
            return widget;
    return nullptr;
}
} // namespace

TrayIconStatusItem::TrayIconStatusItem(QObject* parent) : StatusItem(parent), tray_(this) {
    connect(&tray_, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                // The context menu opens by itself on the right button.
                if (reason == QSystemTrayIcon::Trigger && menu_)
                    menu_->popup(QCursor::pos());
            });
    // Qt makes a new tray widget whenever a tray (re)appears; this is how we learn of it.
    qApp->installEventFilter(this);
}

void TrayIconStatusItem::setTitle(const QString& title) {
    if (title == title_)
        return;
    title_ = title;
    refresh();
}

void TrayIconStatusItem::setIcon(const QIcon& icon) {
    icon_ = icon;
    refresh();
}

void TrayIconStatusItem::setMenu(QMenu* menu) {
    menu_ = menu;
    tray_.setContextMenu(menu);
}

std::optional<QString> TrayIconStatusItem::screenName() const {
    const QRect geometry = tray_.geometry();
    if (!geometry.isValid())
        return std::nullopt;
    const QScreen* screen = QGuiApplication::screenAt(geometry.center());
    if (!screen)
        return std::nullopt;
    return screen->name();
}

QPixmap TrayIconStatusItem::titlePixmap(const QString& title, int height) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(std::max(1, qRound(height * 0.62)));
    const QFontMetricsF metrics(font);
    const qreal padding = height * 0.3;
    const int width = int(std::ceil(metrics.horizontalAdvance(title) + 2 * padding));

    QPixmap pixmap(std::max(width, height), height);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const QPalette palette = QGuiApplication::palette();
    const QRectF plate = QRectF(pixmap.rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.color(QPalette::Window));
    painter.drawRoundedRect(plate, height * 0.25, height * 0.25);
    painter.setFont(font);
    painter.setPen(palette.color(QPalette::WindowText));
    painter.drawText(plate, Qt::AlignCenter | Qt::TextSingleLine, title);
    return pixmap;
}

bool TrayIconStatusItem::eventFilter(QObject* watched, QEvent* event) {
    const bool newWidget = event->type() == QEvent::Show;
    const bool newHeight = event->type() == QEvent::Resize &&
                           static_cast<QResizeEvent*>(event)->size().height() != drawnHeight_;
    if ((newWidget || newHeight) && isTrayWidget(watched))
        QMetaObject::invokeMethod(this, &TrayIconStatusItem::refresh, Qt::QueuedConnection);
    return StatusItem::eventFilter(watched, event);
}

void TrayIconStatusItem::refresh() {
    tray_.setToolTip(title_);
    QWidget* widget = trayWidget();
    drawnHeight_ = widget && widget->height() > 0 ? widget->height() : kDefaultHeight;
    int width = drawnHeight_;
    if (title_.isEmpty()) {
        tray_.setIcon(icon_);
    } else {
        const qreal ratio = widget ? widget->devicePixelRatioF() : qApp->devicePixelRatio();
        QPixmap pixmap = titlePixmap(title_, qRound(drawnHeight_ * ratio));
        pixmap.setDevicePixelRatio(ratio);
        width = int(std::ceil(pixmap.width() / ratio));
        tray_.setIcon(QIcon(pixmap));
    }
    // A tray icon without a picture would be an empty slot in the panel.
    tray_.setVisible(!tray_.icon().isNull());
    if (QWidget* shown = trayWidget()) // made by setVisible when a tray is there
        shown->setMinimumWidth(width);
}

} // namespace deskmark
