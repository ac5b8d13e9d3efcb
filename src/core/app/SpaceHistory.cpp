#include "core/app/SpaceHistory.h"

namespace deskmark {

void SpaceHistory::record(const QList<CGSDisplay>& displays) {
    for (const CGSDisplay& display : displays) {
        if (!display.currentUUID)
            continue;
        const auto last = lastCurrent_.constFind(display.displayUUID);
        if (last != lastCurrent_.constEnd() && *last != *display.currentUUID)
            previous_.insert(display.displayUUID, *last);
        lastCurrent_.insert(display.displayUUID, *display.currentUUID);
    }
}

std::optional<QString> SpaceHistory::previousSpace(const QString& displayUUID) const {
    const auto it = previous_.constFind(displayUUID);
    if (it == previous_.constEnd())
        return std::nullopt;
    return *it;
}

} // namespace deskmark
