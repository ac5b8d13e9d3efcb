#pragma once

#include "core/overlay/AXThumb.h"
#include "core/switcher/SwitchDebugLog.h"
#include "core/switcher/SwitchDriver.h"
#include "core/switcher/SwitchPoll.h"

namespace deskmark {

class AXThumbnails;
class OverviewOpener;
class ScreenProvider;
class SpaceStore;

// Switches the way a user does in the desktop overview: opens it, waits until the wanted
// display's thumbnail strip stands still, presses the wanted thumbnail and waits for the
// overview to close.
class OverviewSwitchDriver : public SwitchDriver {
public:
    static constexpr std::chrono::milliseconds kTimeout{3000};
    // The strip counts as settled after this many equal polls, and no sooner than this
    // long after the display's strip was first seen.
    static constexpr int kStablePolls = 3;
    static constexpr std::chrono::milliseconds kSettleAfterSeen{250};
    static constexpr double kFrameTolerance = 0.5;

    OverviewSwitchDriver(const AXThumbnails& thumbnails, OverviewOpener& opener,
                         const SpaceStore& spaces, const ScreenProvider& screens,
                         Scheduler& scheduler, const SwitchDebugLog& log);

    void press(const SwitchTarget& target, int tryNumber,
               std::function<void(bool sent)> then) override;
    void waitSettled(std::function<void()> then) override { waitClosed(std::move(then)); }
    void cancel() override { poll_.cancel(); }

    void openMissionControlIfNeeded();
    // Hands the display's thumbnails, left to right, to `then` once the strip has
    // settled; after 3.0 s whatever matches by then (possibly nothing).
    void waitForOpen(const CGSDisplay& display, int thumbCount,
                     std::function<void(const QList<AXThumb>&)> then);
    void waitClosed(std::function<void()> then);

private:
    std::optional<QList<AXThumb>> thumbsOf(const QString& displayUUID, int thumbCount) const;

    const AXThumbnails& thumbnails_;
    OverviewOpener& opener_;
    const SpaceStore& spaces_;
    const ScreenProvider& screens_;
    Scheduler& scheduler_;
    const SwitchDebugLog& log_;
    SwitchPoll poll_;
};

} // namespace deskmark
