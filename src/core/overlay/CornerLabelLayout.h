#pragma once

#include "core/overlay/CornerLabelStyle.h"
#include "core/overlay/LabelTextMeasurer.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

namespace deskmark {

// The geometry of a corner label. All rectangles are in global coordinates with the
// origin at the top-left and y growing downwards.
class CornerLabelLayout {
public:
    struct Geometry {
        // The label placed at its position, before the user offsets.
        QRectF base;
        // The label where it is shown: base moved by the offsets and kept inside the
        // visible frame.
        QRectF frame;
        double cornerRadius = 0;
        // The text's baseline start in label coordinates.
        QPointF textOrigin;
        // The font size the label was laid out for, which the text is drawn at.
        double fontSize = 0;
    };

    // The settings are kept as the user or the file gave them; here they are bounded to
    // what the monitor can show. The font size goes from 1 to a quarter of the visible
    // frame's height, the margin from 0 to a quarter of its shorter side, and a label
    // never gets larger than the room inside the margins (its text is cut at the label's
    // edge). A value
    // that is not a number or infinite counts as the style's default.
    static double boundedFontSize(double fontSize, const QRectF& visibleFrame);
    static double boundedMargin(double margin, const QRectF& visibleFrame);

    // The size follows the text: its advance width and the tight height of its glyphs
    // (rounded up), plus the padding. Vertical padding per side is 0.5 × the font size
    // (normal) or 0.3 × (narrow); horizontal padding per side is half the label's height
    // for a capsule and 0.6 × the font size for a square label.
    static Geometry layout(const QString& text, const CornerLabelStyle& style,
                           const QRectF& visibleFrame, const LabelTextMeasurer& measurer);

    // A label of that size at one of the eight positions of the visible frame, `margin`
    // away from the edges it sits against (centred along the others).
    static QRectF place(const QSizeF& size, CornerPosition position, double margin,
                        const QRectF& visibleFrame);

    // Moves a placed label by the user offsets (positive: right and up) and clamps it
    // into the visible frame inset by the margin (bounded as above). The far edges win: a label
    // wider than the room ends at the right inset, one taller than the room starts at the top
    // inset.
    static QRectF offset(const QRectF& base, double offsetX, double offsetY, double margin,
                         const QRectF& visibleFrame);

    // Whether labels at the position sit along the top edge.
    static bool isTopRow(CornerPosition position);
};

} // namespace deskmark
