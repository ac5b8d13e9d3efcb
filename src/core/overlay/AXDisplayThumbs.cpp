#include "core/overlay/AXDisplayThumbs.h"

namespace deskmark {

std::optional<ScreenInfo>
AXDisplayThumbs::screen(const QList<ScreenInfo>& screens,
                        const std::optional<ScreenInfo>& mainScreen) const {
    // Screens and accessibility frames share one coordinate system anchored at the primary
    // screen's top-left corner, so the mid point needs no flipping; without a primary
    // screen there is no anchor and so no answer.
    if (!ScreenInfo::primary(screens, mainScreen))
        return std::nullopt;
    const QPointF mid = frame.center();
    for (const ScreenInfo& screen : screens) {
        const QRectF& s = screen.frame;
        // Half-open, so a point on the edge between two screens belongs to one of them:
        // the left edge counts, and so does the bottom edge rather than the top, as in
        // the bottom-up coordinates the layout of screens is defined in (a point on the
        // line between two stacked screens belongs to the upper one).
        if (mid.x() >= s.left() && mid.x() < s.right() && mid.y() > s.top() &&
            mid.y() <= s.bottom())
            return screen;
    }
    return std::nullopt;
}

} // namespace deskmark
