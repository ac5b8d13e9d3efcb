#pragma once

#include "core/model/SettingsEnums.h"

#include <QString>

namespace deskmark {

// Text measurement, which needs the fonts of the view layer.
class LabelTextMeasurer {
public:
    virtual ~LabelTextMeasurer() = default;

    // The height the text needs at that width (unbounded height) in the system font of
    // that size and weight: one line (elided at the tail) when singleLine, otherwise as
    // many lines as wrapping by character takes.
    virtual double fittingHeight(const QString& text, double fontSize, CornerWeight weight,
                                 double width, bool singleLine) const = 0;
};

} // namespace deskmark
