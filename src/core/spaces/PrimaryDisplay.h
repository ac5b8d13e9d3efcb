#pragma once

#include <QString>

#include <algorithm>
#include <optional>

namespace deskmark {

// The main display among a platform's displays (records with `primary` and `uuid`): the
// one marked primary, else the first; nothing when there are none.
template <typename Displays>
std::optional<QString> primaryOrFirstUUID(const Displays& displays) {
    if (displays.isEmpty())
        return std::nullopt;
    const auto primary = std::find_if(displays.begin(), displays.end(),
                                      [](const auto& display) { return display.primary; });
    return primary != displays.end() ? primary->uuid : displays.first().uuid;
}

} // namespace deskmark
