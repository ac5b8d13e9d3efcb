#include "core/overlay/CornerLabelLayout.h"

#include <algorithm>
#include <cmath>

namespace deskmark {

CornerLabelLayout::Geometry CornerLabelLayout::layout(const QString& text,
                                                      const CornerLabelStyle& style,
                                                      const QRectF& visibleFrame,
                                                      const LabelTextMeasurer& measurer) {
    const double textWidth = measurer.textWidth(text, style.fontSize, style.weight);
    const GlyphYBounds glyphs = measurer.glyphYBounds(text, style.fontSize, style.weight);
    const double glyphHeight = std::ceil(glyphs.height());

    const double vPadding =
        style.fontSize * (style.vPadding == CornerVPadding::Normal ? 0.5 : 0.3);
    const double height = glyphHeight + 2 * vPadding;
    const double hPadding = style.shape == CornerShape::Capsule ? height * 0.5
                                                                 : style.fontSize * 0.6;
    const double width = textWidth + 2 * hPadding;

    Geometry geometry;
    geometry.base = place(QSizeF(width, height), style.position, style.margin, visibleFrame);
    geometry.frame =
        offset(geometry.base, style.offsetX, style.offsetY, style.margin, visibleFrame);
    geometry.cornerRadius = style.shape == CornerShape::Capsule ? height / 2 : 0;
    // The middle of the glyphs' span goes to the middle of the label.
    geometry.textOrigin = QPointF(hPadding, height / 2 - (glyphs.minY + glyphs.maxY) / 2);
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
    // Offsets count upwards; these coordinates count downwards.
    double x = base.left() + offsetX;
    double y = base.top() - offsetY;
    x = std::min(std::max(x, v.left() + margin), v.right() - w - margin);
    y = std::max(std::min(y, v.bottom() - h - margin), v.top() + margin);
    return QRectF(x, y, w, h);
}

bool CornerLabelLayout::isTopRow(CornerPosition position) {
    return position == CornerPosition::TopLeft || position == CornerPosition::Top ||
           position == CornerPosition::TopRight;
}

} // namespace deskmark
