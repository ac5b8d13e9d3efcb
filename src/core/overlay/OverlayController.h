#pragma once

#include "core/overlay/AXThumbnails.h"
#include "core/overlay/ResolvedLabel.h"

#include <QList>
#include <QRectF>
#include <QSet>
#include <QString>

#include <optional>

namespace deskmark {

class LabelTextMeasurer;
class OverviewLabelWindows;
class PresetStore;
class ProjectStore;
class ScreenProvider;
class SettingsStore;
class SpaceStore;

// Lays each named Space's name over its thumbnail while the desktop overview is open.
// Driven by OverviewPoller's fast timer through tick(); labels appear only once the
// thumbnails have stopped sliding in (or the overview has been open long enough), are
// redrawn only when they change, and stay down for the rest of an overview session once
// the user starts typing or scrolling.
class OverlayController {
public:
    // Ticks of presence before labels may appear.
    static constexpr int minPresentTicks = 2;
    // Consecutive ticks without thumbnail motion before labels may appear.
    static constexpr int stableNeeded = 2;
    // Ticks of presence after which labels appear even while thumbnails still move.
    static constexpr int maxOpenTicks = 5;
    // Points a frame may move between ticks and still count as still (or as unchanged).
    static constexpr double tolerance = 2.0;

    OverlayController(const ProjectStore& projectStore, const PresetStore& presetStore,
                      const SettingsStore& settings, const SpaceStore& spaceStore,
                      const AXThumbnails& thumbnails, const ScreenProvider& screens,
                      OverviewLabelWindows& windows, const LabelTextMeasurer& measurer);

    // One polling step; returns whether the overview is open.
    bool tick();
    // Takes the labels down (with the fade) if they are shown; for when the labels are
    // switched off in the settings.
    void hideLabelsNow() { hide(); }
    // For the global key and gesture monitors: the user is working in the overview, so
    // labels that are shown go away until the overview closes.
    void suppressByInput();
    // The displays whose thumbnails the last tick found; empty while the overview is closed.
    const QSet<QString>& presentDisplayUUIDs() const { return presentDisplayUUIDs_; }

    // The labels for the thumbnails of each display: thumbnails are paired with the
    // display's Spaces by position, so a display whose thumbnail count differs from its
    // Space count gets none; Spaces without a named project get none either.
    QList<ResolvedLabel> resolve(const QList<AXDisplayThumbs>& strips) const;

private:
    static bool labelsChanged(const QList<ResolvedLabel>& now, const QList<ResolvedLabel>& before);
    QSet<QString> displayUUIDs(const QList<AXDisplayThumbs>& strips) const;
    std::optional<ScreenInfo> primaryScreen() const;
    void render(const QList<ResolvedLabel>& labels, bool fade);
    void hide();
    void resetSession();

    const ProjectStore& projectStore_;
    const PresetStore& presetStore_;
    const SettingsStore& settings_;
    const SpaceStore& spaceStore_;
    const AXThumbnails& thumbnails_;
    const ScreenProvider& screens_;
    OverviewLabelWindows& windows_;
    const LabelTextMeasurer& measurer_;

    QList<QRectF> lastMotion_;
    QList<ResolvedLabel> lastShown_;
    int stableTicks_ = 0;
    int mcPresentTicks_ = 0;
    bool suppressed_ = false;
    bool shown_ = false;
    QSet<QString> presentDisplayUUIDs_;
};

} // namespace deskmark
