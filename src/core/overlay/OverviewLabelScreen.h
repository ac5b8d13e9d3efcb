#pragma once

#include "core/model/RgbColor.h"
#include "core/overlay/ScreenInfo.h"

#include <QList>
#include <QRectF>
#include <QString>

namespace deskmark {

// The overview labels of one screen, laid out for a window that covers the screen.
struct OverviewLabelScreen {
    struct Box {
        // The box in window coordinates (origin at the window's top-left corner).
        QRectF rect;
        // Where the text goes, in box coordinates.
        QRectF textRect;
        QString text;
        RgbColor background;
        RgbColor textColor;

        friend bool operator==(const Box&, const Box&) = default;
    };

    // The window's frame is the screen's frame.
    ScreenInfo screen;
    QList<Box> boxes;

    friend bool operator==(const OverviewLabelScreen&, const OverviewLabelScreen&) = default;
};

} // namespace deskmark
