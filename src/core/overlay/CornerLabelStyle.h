#pragma once

#include "core/model/SettingsEnums.h"

namespace deskmark {

// How one display's corner label looks and where it goes: the effective corner settings
// of that display, read afresh on every refresh.
struct CornerLabelStyle {
    double fontSize = 13;
    CornerWeight weight = CornerWeight::Regular;
    CornerVPadding vPadding = CornerVPadding::Narrow;
    CornerShape shape = CornerShape::Capsule;
    CornerPosition position = CornerPosition::Bottom;
    // Distance from the edges of the visible frame; also the inset the offsets are
    // clamped to.
    double margin = 0;
    // User offsets, positive to the right and upwards.
    double offsetX = 0;
    double offsetY = 0;

    friend bool operator==(const CornerLabelStyle&, const CornerLabelStyle&) = default;
};

} // namespace deskmark
