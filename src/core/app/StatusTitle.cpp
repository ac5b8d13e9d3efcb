#include "core/app/StatusTitle.h"

namespace deskmark {

StatusTitle StatusTitle::compute(bool showCurrentSpace, const std::optional<QString>& spaceName,
                                 bool iconAvailable) {
    if (showCurrentSpace && spaceName && !spaceName->isEmpty())
        return {*spaceName, false};
    if (iconAvailable)
        return {QString(), true};
    return {QStringLiteral("\U0001F3F7"), false};
}

std::optional<QString> activeDisplayCurrentSpace(const QList<CGSDisplay>& displays,
                                                 const std::optional<QString>& statusDisplayUUID) {
    if (statusDisplayUUID) {
        for (const CGSDisplay& display : displays) {
            if (display.displayUUID == *statusDisplayUUID)
                return display.currentUUID;
        }
    }
    if (displays.isEmpty())
        return std::nullopt;
    return displays.first().currentUUID;
}

} // namespace deskmark
