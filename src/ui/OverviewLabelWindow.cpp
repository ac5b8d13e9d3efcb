#include "ui/OverviewLabelWindow.h"

#include "ui/LabelFont.h"
#include "ui/QtColor.h"

#include <QColor>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

namespace deskmark {

OverviewLabelWindow::OverviewLabelWindow(const OverviewLabelScreen& labels,
                                         const OverviewLabelStyle& style)
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint |
                           Qt::WindowStaysOnTopHint | Qt::WindowTransparentForInput |
                           Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint),
      labels_(labels), font_(LabelFont::font(style.fontSize, style.weight)),
      singleLine_(style.singleLine) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    const auto screens = QGuiApplication::screens();
    for (QScreen* screen : screens) {
        if (screen->name() == labels.screen.name)
            setScreen(screen);
    }
    setGeometry(labels.screen.frame.toAlignedRect());
}

void OverviewLabelWindow::fadeIn() {
    fadeTo(1.0);
}

void OverviewLabelWindow::fadeOut() {
    fadeTo(0.0);
}

void OverviewLabelWindow::fadeTo(double opacity) {
    if (fade_)
        fade_->stop();
    fade_ = new QPropertyAnimation(this, "windowOpacity", this);
    fade_->setDuration(int(fadeDuration.count()));
    fade_->setEndValue(opacity);
    if (opacity == 0.0)
        connect(fade_, &QPropertyAnimation::finished, this, &QWidget::hide);
    fade_->start(QAbstractAnimation::DeleteWhenStopped);
}

void OverviewLabelWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setFont(font_);
    const QFontMetricsF metrics(font_);
    for (const OverviewLabelScreen::Box& box : labels_.boxes) {
        painter.fillRect(box.rect, qtColor(box.background));
        painter.setPen(qtColor(box.textColor));
        const QRectF textRect = box.textRect.translated(box.rect.topLeft());
        if (singleLine_) {
            painter.drawText(textRect, Qt::AlignCenter | Qt::TextSingleLine,
                             metrics.elidedText(box.text, Qt::ElideRight, textRect.width()));
        } else {
            painter.drawText(textRect, Qt::AlignCenter | Qt::TextWrapAnywhere, box.text);
        }
    }
}

} // namespace deskmark
