#include "core/overlay/OverviewPoller.h"

#include "core/model/SettingsStore.h"
#include "core/overlay/AXThumbnails.h"
#include "core/overlay/OverlayController.h"

namespace deskmark {

OverviewPoller::OverviewPoller(Scheduler& scheduler, const AXThumbnails& thumbnails,
                               OverlayController& controller, const SettingsStore& settings,
                               std::function<void(const QSet<QString>&)> overviewDisplaysChanged)
    : scheduler_(scheduler), thumbnails_(thumbnails), controller_(controller), settings_(settings),
      overviewDisplaysChanged_(std::move(overviewDisplaysChanged)) {}

void OverviewPoller::start() {
    if (!detectTimer_)
        detectTimer_ = scheduler_.every(detectInterval, [this] { detect(); });
}

void OverviewPoller::startFastOverlayPolling() {
    if (isFastPolling())
        return;
    const auto interval = settings_.mcLabelEnabled() ? labelInterval : quietInterval;
    fastTimer_ = scheduler_.every(interval, [this] { fastTick(); });
}

void OverviewPoller::detect() {
    if (!isFastPolling() && thumbnails_.isMissionControlPresent())
        startFastOverlayPolling();
}

void OverviewPoller::fastTick() {
    if (controller_.tick()) {
        handOver(controller_.presentDisplayUUIDs());
        return;
    }
    // Stopped here and replaced by the next start, never destroyed inside its own firing.
    fastTimer_->stop();
    handOver({});
}

void OverviewPoller::handOver(const QSet<QString>& displays) {
    if (displays == handedOver_)
        return;
    handedOver_ = displays;
    overviewDisplaysChanged_(handedOver_);
}

} // namespace deskmark
