#pragma once

#include "core/model/RgbColor.h"
#include "core/overlay/ScreenInfo.h"

#include <QRectF>
#include <QString>

namespace deskmark {

// A named Space's label over its overview thumbnail.
struct ResolvedLabel {
    // The thumbnail in global accessibility coordinates (top-left origin, y downwards).
    QRectF frame;
    // The assigned project's name; never empty.
    QString name;
    RgbColor bgColor;
    RgbColor textColor;
    // The screen that shows the thumbnail.
    ScreenInfo screen;
};

} // namespace deskmark
