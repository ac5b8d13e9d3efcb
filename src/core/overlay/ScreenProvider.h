#pragma once

#include "core/overlay/ScreenInfo.h"

#include <QList>

#include <optional>

namespace deskmark {

// The screens attached now. Asked afresh on every call; nothing is cached.
class ScreenProvider {
public:
    virtual ~ScreenProvider() = default;

    // Every screen, in the system's order.
    virtual QList<ScreenInfo> screens() const = 0;
    // The screen the system calls main; none when there is no screen at all.
    virtual std::optional<ScreenInfo> mainScreen() const = 0;
};

} // namespace deskmark
