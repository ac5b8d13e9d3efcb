#pragma once

#include "core/model/RgbColor.h"

namespace deskmark {

// The two colours of a label: its background and its text.
struct ColorPair {
    RgbColor bg;
    RgbColor text;

    friend bool operator==(const ColorPair&, const ColorPair&) = default;
};

} // namespace deskmark
