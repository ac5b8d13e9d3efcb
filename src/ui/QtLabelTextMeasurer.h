#pragma once

#include "core/overlay/LabelTextMeasurer.h"

namespace deskmark {

// Measures label text with the system font, laid out as the label views draw it.
class QtLabelTextMeasurer : public LabelTextMeasurer {
public:
    double fittingHeight(const QString& text, double fontSize, CornerWeight weight, double width,
                         bool singleLine) const override;
    double textWidth(const QString& text, double fontSize, CornerWeight weight) const override;
    GlyphYBounds glyphYBounds(const QString& text, double fontSize,
                              CornerWeight weight) const override;
};

} // namespace deskmark
