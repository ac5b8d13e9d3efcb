#pragma once

#include "core/overlay/LabelTextMeasurer.h"

#include <algorithm>
#include <cmath>

namespace deskmark {

// Text of fixed metrics: every character is 0.6 × the font size wide and a line is
// 1.25 × the font size tall; wrapping breaks anywhere. Capitals and ascenders reach
// 0.7 × the size above the baseline, other letters 0.5 ×; "gjpqy" descend 0.2 × below
// it; spaces have no ink. The weight plays no part.
class FakeLabelTextMeasurer : public LabelTextMeasurer {
public:
    double fittingHeight(const QString& text, double fontSize, CornerWeight, double width,
                         bool singleLine) const override {
        const double lineHeight = fontSize * 1.25;
        if (singleLine || width <= 0)
            return lineHeight;
        const double lines = std::ceil(text.size() * fontSize * 0.6 / width);
        return std::max(lines, 1.0) * lineHeight;
    }

    double textWidth(const QString& text, double fontSize, CornerWeight) const override {
        return text.size() * fontSize * 0.6;
    }

    GlyphYBounds glyphYBounds(const QString& text, double fontSize,
                              CornerWeight) const override {
        GlyphYBounds bounds;
        bool inked = false;
        for (const QChar c : text) {
            if (c.isSpace())
                continue;
            const bool tall = c.isUpper() || c.isDigit() || QStringLiteral("bdfhklt").contains(c);
            const double top = -(tall ? 0.7 : 0.5) * fontSize;
            const double bottom = QStringLiteral("gjpqy").contains(c) ? 0.2 * fontSize : 0.0;
            bounds.minY = inked ? std::min(bounds.minY, top) : top;
            bounds.maxY = inked ? std::max(bounds.maxY, bottom) : bottom;
            inked = true;
        }
        return bounds;
    }
};

} // namespace deskmark
