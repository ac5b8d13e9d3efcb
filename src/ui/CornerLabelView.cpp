#include "ui/CornerLabelView.h"

#include "ui/LabelFont.h"
#include "ui/QtColor.h"

#include <QBitmap>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace deskmark {

CornerLabelView::CornerLabelView()
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint |
                           Qt::WindowStaysOnTopHint | Qt::WindowTransparentForInput |
                           Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
}

void CornerLabelView::setLabel(const CornerLabel& label, const RgbColor& background,
                               double bgOpacity) {
    label_ = label;
    font_ = LabelFont::font(label.fontSize, label.weight);
    background_ = qtColor(background, bgOpacity);
    setGeometry(label.frame.toAlignedRect());
    updateShape();
    wanted_ = true;
    update();
    if (!fadedOut_) {
        show();
        raise(); // above whatever was opened since
    }
}

void CornerLabelView::setBackground(const RgbColor& background, double bgOpacity) {
    background_ = qtColor(background, bgOpacity);
    update();
}

void CornerLabelView::moveTo(const QPointF& topLeft) {
    const QPointF before = frameOffset();
    label_.frame.moveTopLeft(topLeft);
    const QRect window = label_.frame.toAlignedRect();
    if (window.size() == size())
        move(window.topLeft());
    else
        setGeometry(window); // a fractional position can take one more pixel
    if (frameOffset() != before) {
        updateShape();
        update();
    }
}

void CornerLabelView::orderOut() {
    wanted_ = false;
    hide();
}

void CornerLabelView::fadeTo(bool visible, int durationMs) {
    fadedOut_ = !visible;
    if (fade_)
        fade_->stop();
    if (visible && wanted_)
        show();
    fade_ = new QPropertyAnimation(this, "windowOpacity", this);
    fade_->setDuration(durationMs);
    fade_->setEndValue(visible ? 1.0 : 0.0);
    connect(fade_, &QPropertyAnimation::finished, this, [this] {
        if (fadedOut_)
            hide();
    });
    fade_->start(QAbstractAnimation::DeleteWhenStopped);
}

QPointF CornerLabelView::frameOffset() const {
    const QPointF origin = label_.frame.topLeft();
    return origin - QPointF(std::floor(origin.x()), std::floor(origin.y()));
}

QPainterPath CornerLabelView::shape() const {
    QPainterPath path;
    path.addRoundedRect(QRectF(frameOffset(), label_.frame.size()), label_.cornerRadius,
                        label_.cornerRadius);
    return path;
}

void CornerLabelView::updateShape() {
    // Every pixel the shape touches at all, so that edges keep their antialiasing where
    // windows are composited, while without compositing the rounded ends' outside stays
    // clear instead of showing the window's transparent pixels as black.
    QImage coverage(size(), QImage::Format_Alpha8);
    coverage.fill(0);
    {
        QPainter painter(&coverage);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(shape(), Qt::black);
    }
    QImage touched(size(), QImage::Format_MonoLSB);
    touched.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    touched.fill(0);
    for (int y = 0; y < coverage.height(); ++y) {
        const uchar* alpha = coverage.constScanLine(y);
        for (int x = 0; x < coverage.width(); ++x) {
            if (alpha[x] > 0)
                touched.setPixel(x, y, 1);
        }
    }
    setMask(QBitmap::fromImage(touched));
}

void CornerLabelView::paintEvent(QPaintEvent*) {
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::TextAntialiasing);
        const QRectF box(frameOffset(), label_.frame.size());
        painter.fillPath(shape(), background_);
        painter.setFont(font_);
        painter.setPen(qtColor(label_.textColor));
        painter.drawText(box.topLeft() + label_.textOrigin, label_.text);
    }
    Q_EMIT painted();
}

} // namespace deskmark
