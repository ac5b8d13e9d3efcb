#include "core/overlay/CornerLabelLayout.h"

#include <algorithm>
#include <cmath>

namespace deskmark {

namespace {

// A finite value within [low, high] (low wins over a high below it); anything else is
// the fallback.
double bounded(double value, double low, double high, double fallback) {
    if (!std::isfinite(value))
        value = fallback;
    return std::max(low, std::min(value, high));
}

} // namespace

double CornerLabelLayout::boundedFontSize(double fontSize, const QRectF& visibleFrame) {
    return bounded(fontSize, 1, visibleFrame.height() / 4, CornerLabelStyle().fontSize);
}

double CornerLabelLayout::boundedMargin(double margin, const QRectF& visibleFrame) {
    const double shorterSide = std::min(visibleFrame.width(), visibleFrame.height());
    return bounded(margin, 0, shorterSide / 4, CornerLabelStyle().margin);
}

CornerLabelLayout::Geometry CornerLabelLayout::layout(const QString& text,
                                                      const CornerLabelStyle& style,
                                                      const QRectF& visibleFrame,
                                                      const LabelTextMeasurer& measurer) {
    const double fontSize = boundedFontSize(style.fontSize, visibleFrame);
    const double margin = boundedMargin(style.margin, visibleFrame);
    const double textWidth = measurer.textWidth(text, fontSize, style.weight);
    const GlyphYBounds glyphs = measurer.glyphYBounds(text, fontSize, style.weight);
    const double glyphHeight = std::ceil(glyphs.height());

    const double vPadding = fontSize * (style.vPadding == CornerVPadding::Normal ? 0.5 : 0.3);
    // Never larger than the room inside the margins.
    const double height = std::min(glyphHeight + 2 * vPadding, visibleFrame.height() - 2 * margin);
    const double hPadding = style.shape == CornerShape::Capsule ? height * 0.5 : fontSize * 0.6;
    const double width = std::min(textWidth + 2 * hPadding, visibleFrame.width() - 2 * margin);

    Geometry geometry;
    geometry.base = place(QSizeF(width, height), style.position, margin, visibleFrame);
    geometry.frame = offset(geometry.base, style.offsetX, style.offsetY, margin, visibleFrame);
    geometry.cornerRadius = style.shape == CornerShape::Capsule ? height / 2 : 0;
    // The middle of the glyphs' span goes to the middle of the label.
    geometry.textOrigin = QPointF(hPadding, height / 2 - (glyphs.minY + glyphs.maxY) / 2);
    geometry.fontSize = fontSize;
    return geometry;
}

QRectF CornerLabelLayout::place(const QSizeF& size, CornerPosition position, double margin,
                                const QRectF& v) {
    const double w = size.width();
    const double h = size.height();
    const double left = v.left() + margin;
    const double centreX = v.center().x() - w / 2;
    const double right = v.right() - w - margin;
    const double top = v.top() + margin;
    const double middle = v.center().y() - h / 2;
    const double bottom = v.bottom() - h - margin;

    QPointF origin;
    switch (position) {
    case CornerPosition::TopLeft:
        origin = {left, top};
        break;
    case CornerPosition::Top:
        origin = {centreX, top};
        break;
    case CornerPosition::TopRight:
        origin = {right, top};
        break;
    case CornerPosition::Left:
        origin = {left, middle};
        break;
    case CornerPosition::Right:
        origin = {right, middle};
        break;
    case CornerPosition::BottomLeft:
        origin = {left, bottom};
        break;
    case CornerPosition::Bottom:
        origin = {centreX, bottom};
        break;
    case CornerPosition::BottomRight:
        origin = {right, bottom};
        break;
    }
    return QRectF(origin, size);
}

QRectF CornerLabelLayout::offset(const QRectF& base, double offsetX, double offsetY,
                                 double margin, const QRectF& v) {
    const double w = base.width();
    const double h = base.height();
    margin = boundedMargin(margin, v);
    // Offsets count upwards; these coordinates count downwards. Beyond the frame's size
    // an offset changes nothing, so it is bounded to that before any arithmetic.
    double x = base.left() + bounded(offsetX, -v.width(), v.width(), 0);
    double y = base.top() - bounded(offsetY, -v.height(), v.height(), 0);
    x = std::min(std::max(x, v.left() + margin), v.right() - w - margin);
    y = std::max(std::min(y, v.bottom() - h - margin), v.top() + margin);
    return QRectF(x, y, w, h);
}

bool CornerLabelLayout::isTopRow(CornerPosition position) {
    return position == CornerPosition::TopLeft || position == CornerPosition::Top ||
           position == CornerPosition::TopRight;
}

} // namespace deskmark
