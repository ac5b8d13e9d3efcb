#pragma once

#include "core/model/SettingsEnums.h"

#include <QString>

namespace deskmark {

// The vertical extent of a string's actual glyphs, from the baseline, y growing downwards:
// minY is negative for ink above the baseline, maxY positive for descenders.
struct GlyphYBounds {
    double minY = 0;
    double maxY = 0;

    double height() const { return maxY - minY; }

    friend bool operator==(const GlyphYBounds&, const GlyphYBounds&) = default;
};

// Text measurement, which needs the fonts of the view layer. Every call names the system
// font by size and weight.
class LabelTextMeasurer {
public:
    virtual ~LabelTextMeasurer() = default;

    // The height the text needs at that width (unbounded height): one line (elided at the
    // tail) when singleLine, otherwise as many lines as wrapping by character takes.
    virtual double fittingHeight(const QString& text, double fontSize, CornerWeight weight,
                                 double width, bool singleLine) const = 0;
    // The advance width of the text on one line.
    virtual double textWidth(const QString& text, double fontSize, CornerWeight weight) const = 0;
    // The tight vertical bounds of the glyphs the text is drawn with (fallback fonts
    // included); all zero for text without ink.
    virtual GlyphYBounds glyphYBounds(const QString& text, double fontSize,
                                      CornerWeight weight) const = 0;
};

} // namespace deskmark
