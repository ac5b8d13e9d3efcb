#pragma once

#include "core/overlay/LabelTextMeasurer.h"

#include <cmath>

namespace deskmark {

// Text of fixed metrics: every character is 0.6 × the font size wide and a line is
// 1.25 × the font size tall; wrapping breaks anywhere. The weight plays no part.
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
};

} // namespace deskmark
