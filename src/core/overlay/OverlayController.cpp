#include "core/overlay/OverlayController.h"

#include "core/model/PresetStore.h"
#include "core/model/ProjectStore.h"
#include "core/model/SettingsStore.h"
#include "core/overlay/OverviewLabelLayout.h"
#include "core/overlay/OverviewLabelWindows.h"
#include "core/overlay/ScreenProvider.h"
#include "core/spaces/SpaceStore.h"

#include <algorithm>
#include <cmath>

namespace deskmark {

OverlayController::OverlayController(const ProjectStore& projectStore,
                                     const PresetStore& presetStore, const SettingsStore& settings,
                                     const SpaceStore& spaceStore, const AXThumbnails& thumbnails,
                                     const ScreenProvider& screens, OverviewLabelWindows& windows,
                                     const LabelTextMeasurer& measurer)
    : projectStore_(projectStore), presetStore_(presetStore), settings_(settings),
      spaceStore_(spaceStore), thumbnails_(thumbnails), screens_(screens), windows_(windows),
      measurer_(measurer) {}

bool OverlayController::tick() {
    const QList<AXDisplayThumbs> strips = thumbnails_.byDisplay();
    if (strips.isEmpty()) {
        hide();
        resetSession();
        return false;
    }
    ++mcPresentTicks_;
    presentDisplayUUIDs_ = displayUUIDs(strips);

    if (!settings_.mcLabelEnabled()) {
        hide();
        return true;
    }
    if (shown_) {
        const QList<ResolvedLabel> labels = resolve(strips);
        if (labelsChanged(labels, lastShown_))
            render(labels, false);
        return true;
    }
    if (suppressed_)
        return true;

    // Wait for the thumbnails to stop sliding in, but not for ever.
    QList<QRectF> frames = thumbnails_.allButtonFrames();
    const bool still = AXThumbnails::framesEqual(frames, lastMotion_, tolerance);
    lastMotion_ = std::move(frames);
    stableTicks_ = still ? stableTicks_ + 1 : 0;
    const bool settled = stableTicks_ >= stableNeeded && mcPresentTicks_ >= minPresentTicks;
    if (settled || mcPresentTicks_ >= maxOpenTicks)
        render(resolve(strips), true);
    return true;
}

void OverlayController::suppressByInput() {
    if (!shown_)
        return;
    hide();
    suppressed_ = true;
}

QList<ResolvedLabel> OverlayController::resolve(const QList<AXDisplayThumbs>& strips) const {
    QList<ResolvedLabel> labels;
    if (strips.isEmpty())
        return labels;
    const QList<CGSDisplay> displays = spaceStore_.displays();
    const QList<ScreenInfo> screens = screens_.screens();
    const std::optional<ScreenInfo> mainScreen = screens_.mainScreen();

    for (const AXDisplayThumbs& strip : strips) {
        const std::optional<ScreenInfo> screen = strip.screen(screens, mainScreen);
        if (!screen)
            continue;
        const std::optional<QString> displayUUID = spaceStore_.displayUUID(screen->name);
        if (!displayUUID)
            continue;
        const auto display =
            std::find_if(displays.cbegin(), displays.cend(),
                         [&](const CGSDisplay& d) { return d.displayUUID == *displayUUID; });
        // Thumbnails pair with Spaces by position only: any count mismatch labels nothing.
        if (display == displays.cend() || strip.thumbs.size() != display->spaces.size())
            continue;

        for (qsizetype i = 0; i < strip.thumbs.size(); ++i) {
            const AXThumb& thumb = strip.thumbs[i];
            if (thumb.frame.top() < strip.frame.top())
                continue;
            const auto assigned = projectStore_.assignments().constFind(display->spaces[i].uuid);
            if (assigned == projectStore_.assignments().constEnd())
                continue;
            const std::optional<Project> project = projectStore_.project(*assigned);
            if (!project || project->name.isEmpty())
                continue;
            const ColorPair colors = presetStore_.colors(project->presetID);
            labels << ResolvedLabel{thumb.frame, project->name, colors.bg, colors.text, *screen};
        }
    }
    return labels;
}

bool OverlayController::labelsChanged(const QList<ResolvedLabel>& now,
                                      const QList<ResolvedLabel>& before) {
    if (now.size() != before.size())
        return true;
    for (qsizetype i = 0; i < now.size(); ++i) {
        const ResolvedLabel& a = now[i];
        const ResolvedLabel& b = before[i];
        if (a.name != b.name || a.bgColor != b.bgColor || a.textColor != b.textColor ||
            std::abs(a.frame.left() - b.frame.left()) > tolerance ||
            std::abs(a.frame.top() - b.frame.top()) > tolerance)
            return true;
    }
    return false;
}

QSet<QString> OverlayController::displayUUIDs(const QList<AXDisplayThumbs>& strips) const {
    const QList<ScreenInfo> screens = screens_.screens();
    const std::optional<ScreenInfo> mainScreen = screens_.mainScreen();
    QSet<QString> uuids;
    for (const AXDisplayThumbs& strip : strips) {
        if (const auto screen = strip.screen(screens, mainScreen)) {
            if (const auto uuid = spaceStore_.displayUUID(screen->name))
                uuids.insert(*uuid);
        }
    }
    return uuids;
}

std::optional<ScreenInfo> OverlayController::primaryScreen() const {
    return ScreenInfo::primary(screens_.screens(), screens_.mainScreen());
}

void OverlayController::render(const QList<ResolvedLabel>& labels, bool fade) {
    // Screen and thumbnail frames are anchored at the primary screen; without one there
    // is nothing to place the labels against this tick.
    if (!primaryScreen())
        return;
    OverviewLabelStyle style;
    style.fontSize = settings_.mcLabelFontSize();
    style.weight = settings_.mcLabelWeight();
    style.singleLine = settings_.mcLabelSingleLine();
    style.hPadding = settings_.mcLabelHPadding();
    style.vPadding = settings_.mcLabelVPadding();
    style.vPosition = settings_.mcLabelVPosition();
    windows_.show(OverviewLabelLayout::layout(labels, style, measurer_), style, fade);
    lastShown_ = labels;
    shown_ = true;
}

void OverlayController::hide() {
    if (!shown_)
        return;
    shown_ = false;
    windows_.hide();
}

void OverlayController::resetSession() {
    lastMotion_.clear();
    lastShown_.clear();
    stableTicks_ = 0;
    mcPresentTicks_ = 0;
    suppressed_ = false;
    presentDisplayUUIDs_.clear();
}

} // namespace deskmark
