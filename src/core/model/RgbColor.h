#pragma once

#include <QString>

#include <optional>

namespace deskmark {

// An opaque colour in the sRGB colour space, each component in 0…1.
struct RgbColor {
    double red = 0;
    double green = 0;
    double blue = 0;

    // Reads the hex text used in presets.json and the settings: an optional single "#",
    // then exactly six hexadecimal digits (either case) for red, green and blue. Nothing
    // is trimmed; "#36C" and "#3366CCFF" are rejected.
    static std::optional<RgbColor> fromDeskmarkHex(const QString& text);

    // "#RRGGBB" in upper case; components are rounded to the nearest of 256 steps and
    // clamped to the valid range first.
    QString deskmarkHex() const;

    friend bool operator==(const RgbColor&, const RgbColor&) = default;
};

} // namespace deskmark
