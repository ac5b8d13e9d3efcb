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

} // namespace deskmark
