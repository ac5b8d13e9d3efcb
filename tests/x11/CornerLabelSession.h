#pragma once

#include "core/LabelStores.h"
#include "core/overlay/CornerLabelLayout.h"
#include "core/overlay/CornerOverlayController.h"
#include "core/spaces/SpaceStore.h"
#include "platform/linux/X11ScreenWatcher.h"
#include "platform/linux/X11WindowServer.h"
#include "ui/CornerLabelView.h"
#include "ui/QtCornerLabelWindows.h"
#include "ui/QtLabelTextMeasurer.h"
#include "ui/QtScreenProvider.h"

// The stores, the X11 Space source and the corner overlay over real windows, on the two
// monitors of the test session (0 left, 1 right), with the visible frames the session's
// docks leave. The controller assumes compositing until told otherwise.
struct CornerLabelSession : LabelStores {
    // The display UUIDs of the left and right monitor.
    QString display(int index) const {
        return *spaces.displayUUID(screens.screens().at(index).name);
    }
    // Where a label with that text goes on a monitor with the default look otherwise.
    QRectF expected(int index, const QString& text, deskmark::CornerPosition position,
                    double fontSize) const {
        deskmark::CornerLabelStyle style;
        style.position = position;
        style.margin = 12;
        style.fontSize = fontSize;
        return deskmark::CornerLabelLayout::layout(text, style,
                                                   screens.screens().at(index).visibleFrame,
                                                   measurer)
            .frame;
    }
    deskmark::CornerLabelView* view(int index) const { return windows.view(display(index)); }

    deskmark::X11WindowServer server;
    deskmark::SpaceStore spaces{server};
    deskmark::X11ScreenWatcher watcher;
    deskmark::QtScreenProvider screens{
        [this](const QRect& frame) { return watcher.availableArea(frame); }};
    deskmark::QtLabelTextMeasurer measurer;
    deskmark::QtCornerLabelWindows windows;
    deskmark::CornerOverlayController controller{projects, presets, settings, spaces,
                                                 screens,  windows, measurer};
};
