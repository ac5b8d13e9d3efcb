#pragma once

#include "core/model/RgbColor.h"

#include <QColor>

#include <algorithm>

namespace deskmark {

// The Qt colour of an sRGB colour, with that alpha; an alpha beyond 0 to 1 gives the
// nearest end (Qt would make the colour invalid, which draws as nothing or black).
inline QColor qtColor(const RgbColor& color, double alpha = 1.0) {
    return QColor::fromRgbF(float(color.red), float(color.green), float(color.blue),
                            float(std::clamp(alpha, 0.0, 1.0)));
}

} // namespace deskmark
