#pragma once

#include "core/switcher/SwitchDebugLog.h"
#include "core/switcher/SwitchDriver.h"
#include "core/switcher/SwitchPoll.h"

namespace deskmark {

class SpaceRequester;
class SpaceStore;

// Switches by asking the window manager for the Space, then watches the display until it
// shows that Space or 3.0 s have passed.
class DirectSwitchDriver : public SwitchDriver {
public:
    static constexpr std::chrono::milliseconds kTimeout{3000};

    DirectSwitchDriver(SpaceRequester& requester, const SpaceStore& spaces, Scheduler& scheduler,
                       const SwitchDebugLog& log);

    void press(const SwitchTarget& target, int tryNumber,
               std::function<void(bool sent)> then) override;
    void waitSettled(std::function<void()> then) override { then(); }
    void cancel() override { poll_.cancel(); }
    // Asks for the chosen Space again: it is showing already, so the window manager only
    // moves the focus back to its display.
    void refocus(const SwitchTarget& chosen) override;

private:
    SpaceRequester& requester_;
    const SpaceStore& spaces_;
    Scheduler& scheduler_;
    const SwitchDebugLog& log_;
    SwitchPoll poll_;
};

} // namespace deskmark
