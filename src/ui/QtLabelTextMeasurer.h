#pragma once

#include "core/overlay/LabelTextMeasurer.h"

namespace deskmark {

// Measures label text with the system font, laid out as OverviewLabelWindow draws it.
class QtLabelTextMeasurer : public LabelTextMeasurer {
public:
    double fittingHeight(const QString& text, double fontSize, CornerWeight weight, double width,
                         bool singleLine) const override;
};

} // namespace deskmark
