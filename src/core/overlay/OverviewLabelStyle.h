#pragma once

#include "core/model/SettingsEnums.h"

namespace deskmark {

// How overview labels look, read from the settings once per render.
struct OverviewLabelStyle {
    double fontSize = 0;
    CornerWeight weight = CornerWeight::Medium;
    // One line ending in an ellipsis; otherwise the name wraps by character.
    bool singleLine = false;
    // Space between the box's edges and its text, per side.
    double hPadding = 0;
    double vPadding = 0;
    MCLabelVPosition vPosition = MCLabelVPosition::Bottom;

    friend bool operator==(const OverviewLabelStyle&, const OverviewLabelStyle&) = default;
};

} // namespace deskmark
