#pragma once

#include "core/overlay/AXThumb.h"
#include "core/overlay/ScreenInfo.h"

#include <QList>
#include <QRectF>

#include <optional>

namespace deskmark {

// The Space strip of one display in the desktop overview.
struct AXDisplayThumbs {
    // The display element's frame in global accessibility coordinates.
    QRectF frame;
    // The display's Space thumbnails, left to right.
    QList<AXThumb> thumbs;

    // The screen that shows this display: the first screen, in the order given, that
    // contains the mid point of the display frame. None when there is no primary screen
    // (ScreenInfo::primary) or no screen contains the point.
    std::optional<ScreenInfo> screen(const QList<ScreenInfo>& screens,
                                     const std::optional<ScreenInfo>& mainScreen) const;
};

} // namespace deskmark
