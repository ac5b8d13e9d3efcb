#include "ui/QtLabelTextMeasurer.h"

#include "ui/LabelFont.h"

#include <QFontMetricsF>

#include <limits>

namespace deskmark {

double QtLabelTextMeasurer::fittingHeight(const QString& text, double fontSize, CornerWeight weight,
                                          double width, bool singleLine) const {
    const QFontMetricsF metrics(LabelFont::font(fontSize, weight));
    if (singleLine)
        return metrics.height();
    const QRectF room(0, 0, width, std::numeric_limits<int>::max());
    return metrics.boundingRect(room, Qt::TextWrapAnywhere, text).height();
}

double QtLabelTextMeasurer::textWidth(const QString& text, double fontSize,
                                      CornerWeight weight) const {
    return QFontMetricsF(LabelFont::font(fontSize, weight)).horizontalAdvance(text);
}

GlyphYBounds QtLabelTextMeasurer::glyphYBounds(const QString& text, double fontSize,
                                               CornerWeight weight) const {
    // The union of the glyphs' own bounding boxes, whichever font each glyph comes from.
    const QRectF ink = QFontMetricsF(LabelFont::font(fontSize, weight)).tightBoundingRect(text);
    if (ink.isEmpty())
        return {};
    return GlyphYBounds{ink.top(), ink.bottom()};
}

} // namespace deskmark
