#pragma once

#include "core/overlay/ScreenInfo.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>

namespace deskmark {

// Where the bookmark popup is pinned to its screen: the window's top-left corner or its
// bottom-left corner sits at `point`. Global coordinates, y growing downwards, in
// device-independent pixels.
struct BookmarkAnchor {
    enum class Corner { TopLeft, BottomLeft };
    Corner corner = Corner::TopLeft;
    QPointF point;

    friend bool operator==(const BookmarkAnchor&, const BookmarkAnchor&) = default;
};

// The placement and size rules of the bookmark popup. Every length is multiplied by the
// popup scale of the display it opens on.
namespace BookmarkPopupGeometry {

// The popup's width on a screen: 720 at scale 1, never wider than the screen less 16.
double popupWidth(const QRectF& visibleFrame, double scale);

// Where the popup opens. `screen` is the screen that holds the panel item (else the
// primary one); with none there is no anchor. Near the mouse when the mouse is on that
// screen (opening upward when the mouse is near the bottom), else above the centre.
std::optional<BookmarkAnchor> bookmarkAnchor(const std::optional<ScreenInfo>& screen,
                                             double scale, const QPointF& mouse);

// One row: two lines when both the label and the target are shown, else one.
double rowHeight(double scale, bool showLabel, bool showTarget);
// One group header.
double headerHeight(double scale);

// The list's height: its rows and group headers, but never more than maxHeight.
double listHeight(int rows, int headers, double scale, bool showLabel, bool showTarget,
                  double maxHeight);

// The tallest the list may grow on the target screen (the one under the mouse, else the
// primary one) while the footer and the hint box still fit below it: never less than 240
// at scale 1; 320 when there is no screen at all.
double maxListHeight(const std::optional<ScreenInfo>& target,
                     const std::optional<BookmarkAnchor>& anchor, const QPointF& mouse,
                     bool hintsVisible, double scale);

// The window's top-left corner for a window of `size` placed at the anchor.
QPointF topLeftAt(const BookmarkAnchor& anchor, const QSizeF& size);

// The window moved back inside the visible frame; a window larger than the frame keeps
// its top-left corner inside it.
QRectF keepInsideScreen(const QRectF& window, const QRectF& visibleFrame);

} // namespace BookmarkPopupGeometry

} // namespace deskmark
