#pragma once

#include "core/model/RgbColor.h"

#include <QColor>

namespace deskmark {

// The Qt colour of an sRGB colour, with that alpha.
inline QColor qtColor(const RgbColor& color, double alpha = 1.0) {
    return QColor::fromRgbF(float(color.red), float(color.green), float(color.blue),
                            float(alpha));
}

} // namespace deskmark
