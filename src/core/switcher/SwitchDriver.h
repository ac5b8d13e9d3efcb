#pragma once

#include "core/switcher/SwitchTarget.h"

#include <functional>

namespace deskmark {

// The platform's way of making one Space current: through the desktop overview where
// one can be driven, or by asking the window manager directly.
class SwitchDriver {
public:
    virtual ~SwitchDriver() = default;

    // Tries once (try number `tryNumber`, from 1) to make target's Space current and
    // reports whether the request went out. A request that went out has had its time
    // to take effect when `then` runs; whether it did is the caller's check.
    virtual void press(const SwitchTarget& target, int tryNumber,
                       std::function<void(bool sent)> then) = 0;
    // Waits until the driver's own traces are gone from the screen (an overview that is
    // still closing), then calls `then`.
    virtual void waitSettled(std::function<void()> then) = 0;
    // Drops whatever press or wait is under way without calling its continuation.
    virtual void cancel() = 0;
    // Called when a round that also switched other displays is over, with the target
    // chosen first. Where a switch also moves the focus to its display (i3, sway), the driver
    // gives the focus back to the chosen display; elsewhere there is nothing to do.
    virtual void refocus(const SwitchTarget& chosen) { Q_UNUSED(chosen); }
};

} // namespace deskmark
