#pragma once

#include "core/model/SettingsEnums.h"

#include <QFont>

namespace deskmark {

// The system font at a label's size and weight.
class LabelFont {
public:
    // The size is in logical pixels, the unit of the screen geometry the labels are laid
    // out in, so a label's text keeps its proportion to the box around it.
    static QFont font(double size, CornerWeight weight);
};

} // namespace deskmark
