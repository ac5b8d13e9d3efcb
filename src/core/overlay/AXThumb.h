#pragma once

#include "core/overlay/AccessibilityElement.h"

#include <QRectF>
#include <QString>

namespace deskmark {

// One Space thumbnail of the desktop overview.
struct AXThumb {
    // The button's "AXTitle" (a desktop number, an application name); empty when absent.
    QString title;
    // The thumbnail in global accessibility coordinates (top-left origin, y downwards).
    QRectF frame;
    // The button itself, kept so that it can be pressed.
    AXElement element;
};

} // namespace deskmark
