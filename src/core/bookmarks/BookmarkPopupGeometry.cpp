#include "core/bookmarks/BookmarkPopupGeometry.h"

#include <algorithm>

namespace deskmark::BookmarkPopupGeometry {

namespace {
constexpr double kWidth = 720;
constexpr double kScreenMargin = 16;
constexpr double kMouseGap = 8;
constexpr double kUpwardBelow = 460; // a mouse closer than this to the bottom opens upward
constexpr double kAboveCentre = 200;
constexpr double kTwoLineRow = 44;
constexpr double kOneLineRow = 30;
constexpr double kHeader = 26;
constexpr double kListPadding = 8;
constexpr double kReserveWithHints = 195;
constexpr double kReserveWithoutHints = 85;
constexpr double kMinimumList = 240;
constexpr double kNoScreenList = 320;
} // namespace

double popupWidth(const QRectF& visibleFrame, double scale) {
    return std::min(visibleFrame.width() - kScreenMargin, scale * kWidth);
}

std::optional<BookmarkAnchor> bookmarkAnchor(const std::optional<ScreenInfo>& screen,
                                             double scale, const QPointF& mouse) {
    if (!screen)
        return std::nullopt;
    const QRectF& visible = screen->visibleFrame;
    const double width = popupWidth(visible, scale);
    if (!screen->frame.contains(mouse))
        return BookmarkAnchor{BookmarkAnchor::Corner::TopLeft,
                              {visible.center().x() - width / 2,
                               visible.center().y() - kAboveCentre}};
    const double x = std::max(visible.left(),
                              std::min(visible.right() - width, mouse.x() + kMouseGap));
    if (visible.bottom() - mouse.y() < scale * kUpwardBelow)
        return BookmarkAnchor{BookmarkAnchor::Corner::BottomLeft,
                              {x, visible.bottom() - kMouseGap}};
    return BookmarkAnchor{BookmarkAnchor::Corner::TopLeft,
                          {x, std::max(visible.top(), mouse.y() + kMouseGap)}};
}

double rowHeight(double scale, bool showLabel, bool showTarget) {
    return (showLabel && showTarget ? kTwoLineRow : kOneLineRow) * scale;
}

double headerHeight(double scale) { return kHeader * scale; }

double listHeight(int rows, int headers, double scale, bool showLabel, bool showTarget,
                  double maxHeight) {
    const double wanted = rowHeight(scale, showLabel, showTarget) * rows +
                          headerHeight(scale) * headers + kListPadding * scale;
    return std::min(wanted, maxHeight);
}

double maxListHeight(const std::optional<ScreenInfo>& target,
                     const std::optional<BookmarkAnchor>& anchor, const QPointF& mouse,
                     bool hintsVisible, double scale) {
    if (!target)
        return kNoScreenList * scale;
    const QRectF& visible = target->visibleFrame;
    const double reserve = (hintsVisible ? kReserveWithHints : kReserveWithoutHints) * scale;
    double room = 0;
    if (anchor && anchor->corner == BookmarkAnchor::Corner::BottomLeft)
        room = anchor->point.y() - visible.top();
    else
        room = visible.bottom() - std::max(visible.top(), anchor ? anchor->point.y() : mouse.y());
    const double fitting = std::min(visible.height() - reserve, room - reserve);
    return std::max(fitting, kMinimumList * scale);
}

QPointF topLeftAt(const BookmarkAnchor& anchor, const QSizeF& size) {
    if (anchor.corner == BookmarkAnchor::Corner::BottomLeft)
        return {anchor.point.x(), anchor.point.y() - size.height()};
    return anchor.point;
}

QRectF keepInsideScreen(const QRectF& window, const QRectF& visibleFrame) {
    QRectF moved = window;
    if (moved.right() > visibleFrame.right())
        moved.moveRight(visibleFrame.right());
    if (moved.bottom() > visibleFrame.bottom())
        moved.moveBottom(visibleFrame.bottom());
    if (moved.left() < visibleFrame.left())
        moved.moveLeft(visibleFrame.left());
    if (moved.top() < visibleFrame.top())
        moved.moveTop(visibleFrame.top());
    return moved;
}

} // namespace deskmark::BookmarkPopupGeometry
