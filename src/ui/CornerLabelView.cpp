#include "ui/CornerLabelView.h"

#include "ui/LabelFont.h"
#include "ui/QtColor.h"

#include <QPainter>
#include <QPainterPath>
#include <QRegion>

#include <algorithm>
#include <cmath>

namespace deskmark {

CornerLabelView::CornerLabelView(WindowPlacer* placer, const QString& key)
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint |
                           Qt::WindowStaysOnTopHint | Qt::WindowTransparentForInput |
                           Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint),
      placer_(placer) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    if (placer_)
        setWindowTitle(placer_->windowTitle(key));
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
        placeShown();
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
    placeShown();
}

void CornerLabelView::placeShown() {
    if (placer_ && isVisible())
        placer_->place(windowTitle(), label_.frame.toAlignedRect().topLeft());
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
    if (placer_)
        return;
    // Blended with what lies below (a compositing manager runs): every pixel the shape
    // touches at all, so that the edges keep their antialiasing. Otherwise a partly
    // covered pixel would be drawn over black: exactly the pixels whose centres lie
    // inside the shape, each drawn in full. Worked out from the geometry: one span per
    // pixel row where the ends curve, one rectangle between, so the cost follows the
    // corner radius, never the label's area.
    const QRectF box(frameOffset(), label_.frame.size());
    const double radius =
        std::clamp(label_.cornerRadius, 0.0, std::min(box.width(), box.height()) / 2);
    const double straightTop = box.top() + radius;
    const double straightBottom = box.bottom() - radius;
    const bool exact = !label_.blended;
    const auto distanceFromStraight = [&](double y0, double y1) {
        return y1 < straightTop ? straightTop - y1 : y0 > straightBottom ? y0 - straightBottom : 0;
    };
    // The pixels of row y between the shape's edges, `inset` in from the box's sides.
    const auto span = [&](int y, int height, double inset) {
        if (exact) {
            // A centre on the left edge is inside, one on the right edge is not.
            const int first = int(std::ceil(box.left() + inset - 0.5));
            const int end = int(std::ceil(box.right() - inset - 0.5));
            return QRect(first, y, end - first, height);
        }
        const int first = int(std::floor(box.left() + inset));
        return QRect(first, y, int(std::ceil(box.right() - inset)) - first, height);
    };
    const auto row = [&](int y) {
        double fromStraight = 0;
        if (exact) {
            const double centre = y + 0.5;
            fromStraight = distanceFromStraight(centre, centre);
            if (centre < box.top() || centre >= box.bottom() || fromStraight > radius)
                return QRect();
        } else {
            // The row's widest extent is where it comes nearest to the straight part.
            fromStraight = distanceFromStraight(std::max<double>(y, box.top()),
                                                std::min<double>(y + 1, box.bottom()));
        }
        const double inset =
            radius - std::sqrt(std::max(0.0, radius * radius - fromStraight * fromStraight));
        return span(y, 1, inset);
    };
    const int top = int(std::floor(box.top()));
    const int bottom = int(std::ceil(box.bottom()));
    const int straightStart = std::min(bottom, int(std::ceil(straightTop)));
    const int straightEnd = std::max(straightStart, int(std::floor(straightBottom)));
    QList<QRect> rects;
    for (int y = top; y < straightStart; ++y)
        rects << row(y);
    if (straightEnd > straightStart)
        rects << span(straightStart, straightEnd - straightStart, 0);
    for (int y = straightEnd; y < bottom; ++y)
        rects << row(y);
    rects.removeIf([](const QRect& r) { return r.isEmpty(); });
    QRegion inside;
    inside.setRects(rects.constData(), int(rects.size()));
    setMask(inside);
}

void CornerLabelView::paintEvent(QPaintEvent*) {
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::TextAntialiasing);
        const QRectF box(frameOffset(), label_.frame.size());
        // Unblended, the mask alone gives the shape: every pixel it keeps is drawn in
        // full, so none shows the black that stands in for what lies below.
        if (label_.blended)
            painter.fillPath(shape(), background_);
        else
            painter.fillRect(rect(), background_);
        painter.setFont(font_);
        painter.setPen(qtColor(label_.textColor));
        painter.drawText(box.topLeft() + label_.textOrigin, label_.text);
    }
    Q_EMIT painted();
}

} // namespace deskmark
