#include "core/switcher/OverviewSwitchDriver.h"

#include "core/overlay/AXThumbnails.h"
#include "core/overlay/ScreenProvider.h"
#include "core/spaces/SpaceStore.h"
#include "core/switcher/OverviewOpener.h"

namespace deskmark {

namespace {
double seconds(std::chrono::milliseconds duration) { return double(duration.count()) / 1000.0; }
QString twoDecimals(std::chrono::milliseconds duration) {
    return QString::number(seconds(duration), 'f', 2);
}
} // namespace

OverviewSwitchDriver::OverviewSwitchDriver(const AXThumbnails& thumbnails, OverviewOpener& opener,
                                           const SpaceStore& spaces, const ScreenProvider& screens,
                                           Scheduler& scheduler, const SwitchDebugLog& log)
    : thumbnails_(thumbnails), opener_(opener), spaces_(spaces), screens_(screens),
      scheduler_(scheduler), log_(log), poll_(scheduler) {}

void OverviewSwitchDriver::press(const SwitchTarget& target, int tryNumber,
                                 std::function<void(bool sent)> then) {
    openMissionControlIfNeeded();
    const int index = target.index;
    waitForOpen(target.display, int(target.display.spaces.size()),
                [this, index, tryNumber, then](const QList<AXThumb>& thumbs) {
                    if (index < 0 || index >= thumbs.size()) {
                        log_.dbg(QStringLiteral("SW: thumbnails not found (try %1)").arg(tryNumber));
                        waitClosed([then] { then(false); });
                        return;
                    }
                    const AXThumb& thumb = thumbs[index];
                    const bool pressed = thumb.element->press();
                    log_.dbg(QStringLiteral("SW: press ok=%1 idx=%2 title=%3")
                                 .arg(pressed ? QStringLiteral("true") : QStringLiteral("false"))
                                 .arg(index)
                                 .arg(thumb.title));
                    waitClosed([then] { then(true); });
                });
}

void OverviewSwitchDriver::openMissionControlIfNeeded() {
    if (!thumbnails_.isMissionControlPresent())
        opener_.openOverview();
}

std::optional<QList<AXThumb>> OverviewSwitchDriver::thumbsOf(const QString& displayUUID,
                                                             int thumbCount) const {
    const QList<ScreenInfo> screens = screens_.screens();
    const std::optional<ScreenInfo> mainScreen = screens_.mainScreen();
    for (const AXDisplayThumbs& record : thumbnails_.byDisplay()) {
        const auto screen = record.screen(screens, mainScreen);
        if (screen && spaces_.displayUUID(screen->name) == displayUUID &&
            record.thumbs.size() == thumbCount)
            return record.thumbs;
    }
    return std::nullopt;
}

void OverviewSwitchDriver::waitForOpen(const CGSDisplay& display, int thumbCount,
                                       std::function<void(const QList<AXThumb>&)> then) {
    struct State {
        std::chrono::milliseconds start;
        std::optional<std::chrono::milliseconds> firstSeen;
        QList<QRectF> previousFrames;
        int stable = 0;
        QList<AXThumb> thumbs;
    };
    auto state = std::make_shared<State>();
    state->start = scheduler_.now();
    const QString displayUUID = display.displayUUID;
    poll_.start(
        [this, state, displayUUID, thumbCount] {
            const auto now = scheduler_.now();
            const auto matching = thumbsOf(displayUUID, thumbCount);
            if (matching && !state->firstSeen)
                state->firstSeen = now;
            const QList<QRectF> frames = thumbnails_.allButtonFrames();
            state->stable = AXThumbnails::framesEqual(frames, state->previousFrames, kFrameTolerance)
                                ? state->stable + 1
                                : 0;
            state->previousFrames = frames;
            const auto elapsed = now - state->start;
            const auto seen = state->firstSeen ? now - *state->firstSeen : std::chrono::milliseconds{0};
            state->thumbs = matching.value_or(QList<AXThumb>());
            if (matching && state->stable >= kStablePolls && seen >= kSettleAfterSeen) {
                log_.dbg(QStringLiteral("SW: open done elapsed=%1 seen=%2 frames=%3")
                             .arg(twoDecimals(elapsed), twoDecimals(seen))
                             .arg(frames.size()));
                return true;
            }
            if (elapsed > kTimeout) {
                log_.dbg(QStringLiteral("SW: open timeout elapsed=%1 matched=%2 stable=%3")
                             .arg(twoDecimals(elapsed),
                                  matching ? QStringLiteral("true") : QStringLiteral("false"))
                             .arg(state->stable));
                return true;
            }
            return false;
        },
        [state, then] { then(state->thumbs); });
}

void OverviewSwitchDriver::waitClosed(std::function<void()> then) {
    const auto start = scheduler_.now();
    poll_.start(
        [this, start] {
            return !thumbnails_.isMissionControlPresent() || scheduler_.now() - start > kTimeout;
        },
        std::move(then));
}

} // namespace deskmark
