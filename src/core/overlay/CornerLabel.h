#pragma once

#include "core/model/RgbColor.h"
#include "core/model/SettingsEnums.h"

#include <QPointF>
#include <QRectF>
#include <QString>

namespace deskmark {

// What a corner label window draws, apart from its background.
struct CornerLabel {
    QString text;
    double fontSize = 0;
    CornerWeight weight = CornerWeight::Regular;
    RgbColor textColor;
    // The window in global coordinates (top-left origin, y downwards).
    QRectF frame;
    // Half the height for a capsule, 0 for square corners.
    double cornerRadius = 0;
    // Where the text's baseline starts, in label coordinates: placed so that the glyphs'
    // own vertical extent, not the font's line box, sits in the middle of the label.
    QPointF textOrigin;
    // Whether the window is blended with what lies below it (a compositing manager
    // runs): then its edges are smoothed. Otherwise every pixel of the window is drawn
    // in full, so it is cut to exactly the pixels whose centres lie inside the shape.
    bool blended = true;

    friend bool operator==(const CornerLabel&, const CornerLabel&) = default;
};

} // namespace deskmark
