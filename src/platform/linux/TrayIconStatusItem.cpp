#include "platform/linux/TrayIconStatusItem.h"

#include "platform/linux/PanelIcon.h"

#include <QApplication>
#include <QCursor>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QMenu>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QResizeEvent>
#include <QScreen>

#include <algorithm>
#include <cmath>

using namespace std::chrono_literals;

namespace deskmark {

namespace {
// Qt's slot size before a tray has sized the icon.
constexpr int kDefaultHeight = 22;
// Trays paint their background around a new slot a moment after placing it.
constexpr auto kBackgroundSettleDelay = 300ms;

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
    backgroundCheck_.setSingleShot(true);
    backgroundCheck_.setInterval(kBackgroundSettleDelay);
    connect(&backgroundCheck_, &QTimer::timeout, this, &TrayIconStatusItem::readPanelBackground);
    // Qt makes a new tray widget whenever a tray (re)appears; this is how we learn of it.
    qApp->installEventFilter(this);
}

void TrayIconStatusItem::setTitle(const QString& title) {
    if (title == title_)
        return;
    title_ = title;
    refresh();
}

// A tray icon without a tool tip would leave the pointer guessing whose it is.
void TrayIconStatusItem::setToolTip(const QString& text) {
    tray_.setToolTip(text.isEmpty() ? QStringLiteral("Deskmark") : text);
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

QImage TrayIconStatusItem::slotImage(const QIcon& icon, const QString& title, int height,
                                     const QColor& background) {
    const QColor ink = PanelIcon::foregroundOn(background);
    // A panel's own icons fill about three quarters of its height, its text a little more
    // than half.
    const int iconSize = std::max(1, qRound(height * 0.75));
    const QImage glyph = PanelIcon::tinted(icon, QSize(iconSize, iconSize), ink);
    QFont font = QGuiApplication::font();
    font.setPixelSize(std::max(1, qRound(height * 0.56)));
    const QFontMetricsF metrics(font);
    const qreal padding = height * 0.15;
    const qreal glyphWidth = glyph.isNull() ? 0 : iconSize;
    const qreal gap = glyph.isNull() || title.isEmpty() ? 0 : height * 0.25;
    const qreal textWidth = title.isEmpty() ? 0 : metrics.horizontalAdvance(title);
    const int width =
        title.isEmpty() ? height : int(std::ceil(padding + glyphWidth + gap + textWidth + padding));

    QImage image(std::max(width, height), height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    // Centred as a whole: a lone icon in its square, or the icon and the title together.
    qreal x = (image.width() - (glyphWidth + gap + textWidth)) / 2;
    if (!glyph.isNull()) {
        painter.drawImage(QPointF(x, (height - iconSize) / 2.0), glyph);
        x += glyphWidth + gap;
    }
    if (!title.isEmpty()) {
        painter.setFont(font);
        painter.setPen(ink);
        painter.drawText(QRectF(x, 0, textWidth + 1, height),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, title);
    }
    return image;
}

QColor TrayIconStatusItem::dominantColor(const QImage& image) {
    if (image.isNull())
        return {};
    QList<QRgb> pixels;
    pixels.reserve(qsizetype(image.width()) * image.height());
    const QImage rgb = image.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < rgb.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(rgb.constScanLine(y));
        for (int x = 0; x < rgb.width(); ++x)
            pixels.append(row[x]);
    }
    const auto middle = pixels.begin() + pixels.size() / 2;
    std::nth_element(pixels.begin(), middle, pixels.end(),
                     [](QRgb a, QRgb b) { return qGray(a) < qGray(b); });
    return QColor(*middle);
}

bool TrayIconStatusItem::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if ((type == QEvent::Show || type == QEvent::Move || type == QEvent::Resize) &&
        isTrayWidget(watched)) {
        const bool newHeight = type == QEvent::Resize &&
                               static_cast<QResizeEvent*>(event)->size().height() != drawnHeight_;
        if (type == QEvent::Show || newHeight)
            QMetaObject::invokeMethod(this, &TrayIconStatusItem::refresh, Qt::QueuedConnection);
        backgroundCheck_.start();
        Q_EMIT placementChanged();
    }
    return StatusItem::eventFilter(watched, event);
}

// The screen's pixels where the slot is: the panel, with the item's icon and text over a
// minority of them.
void TrayIconStatusItem::readPanelBackground() {
    QWidget* slot = trayWidget();
    QScreen* screen = slot ? slot->screen() : nullptr;
    if (!slot || !screen || !slot->isVisible())
        return;
    const QPoint origin = slot->mapToGlobal(QPoint(0, 0)) - screen->geometry().topLeft();
    const QColor background = dominantColor(
        screen->grabWindow(0, origin.x(), origin.y(), slot->width(), slot->height()).toImage());
    if (!background.isValid() || background == panelBackground_)
        return;
    panelBackground_ = background;
    refresh();
}

void TrayIconStatusItem::refresh() {
    QWidget* widget = trayWidget();
    drawnHeight_ = widget && widget->height() > 0 ? widget->height() : kDefaultHeight;
    const qreal ratio = widget ? widget->devicePixelRatioF() : qApp->devicePixelRatio();
    const QColor background = panelBackground_.isValid()
                                  ? panelBackground_
                                  : QGuiApplication::palette().color(QPalette::Window);
    int width = drawnHeight_;
    if (icon_.isNull() && title_.isEmpty()) {
        tray_.setIcon(QIcon());
    } else {
        QPixmap pixmap =
            QPixmap::fromImage(slotImage(icon_, title_, qRound(drawnHeight_ * ratio), background));
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
