#pragma once

#include "core/app/Scheduler.h"

#include <QSet>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace deskmark {

class AXThumbnails;
class OverlayController;
class SettingsStore;

// The two timers behind the overview labels. A slow detection timer looks for the
// overview; once it is open, a fast timer ticks the OverlayController until the first
// tick that finds it closed. After each tick the displays that show the overview are
// handed to the corner overlay (through overviewDisplaysChanged) whenever they change,
// and an empty set once the overview closes, so its top-row labels can step aside.
class OverviewPoller {
public:
    static constexpr std::chrono::milliseconds detectInterval{200};
    // The fast timer's pace while labels are on; while they are off it keeps ticking at
    // the slow pace, since the corner overlay still needs to know about the overview.
    static constexpr std::chrono::milliseconds labelInterval{50};
    static constexpr std::chrono::milliseconds quietInterval{200};

    OverviewPoller(Scheduler& scheduler, const AXThumbnails& thumbnails,
                   OverlayController& controller, const SettingsStore& settings,
                   std::function<void(const QSet<QString>&)> overviewDisplaysChanged);

    // Starts the detection timer. Only platforms whose accessibility tree can show the
    // overview call it: on Linux no desktop exposes its overview, so the application
    // never starts detection there and no timer runs at all.
    void start();
    // Starts the fast timer unless it is running; its pace is fixed when it starts.
    void startFastOverlayPolling();
    bool isFastPolling() const { return fastTimer_ && fastTimer_->isActive(); }

private:
    void detect();
    void fastTick();
    void handOver(const QSet<QString>& displays);

    Scheduler& scheduler_;
    const AXThumbnails& thumbnails_;
    OverlayController& controller_;
    const SettingsStore& settings_;
    std::function<void(const QSet<QString>&)> overviewDisplaysChanged_;
    std::unique_ptr<RepeatingTimer> detectTimer_;
    std::unique_ptr<RepeatingTimer> fastTimer_;
    // What the corner overlay was last given.
    QSet<QString> handedOver_;
};

} // namespace deskmark
