#include "core/overlay/ScreenInfo.h"

namespace deskmark {

std::optional<ScreenInfo> ScreenInfo::primary(const QList<ScreenInfo>& screens,
                                              const std::optional<ScreenInfo>& mainScreen) {
    for (const ScreenInfo& screen : screens) {
        if (screen.frame.topLeft() == QPointF(0, 0))
            return screen;
    }
    return mainScreen;
}

std::optional<QString> ScreenInfo::screenOf(const QRectF& area, const QList<ScreenInfo>& screens) {
    std::optional<QString> best;
    double bestShare = 0;
    for (const ScreenInfo& screen : screens) {
        const QRectF shared = screen.frame.intersected(area);
        const double share = shared.width() * shared.height();
        if (share > bestShare) {
            bestShare = share;
            best = screen.name;
        }
    }
    return best;
}

} // namespace deskmark
