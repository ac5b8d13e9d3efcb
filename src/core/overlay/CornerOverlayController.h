#pragma once

#include "core/model/ColorPair.h"
#include "core/model/SpaceStyle.h"
#include "core/overlay/CornerLabel.h"
#include "core/overlay/CornerLabelStyle.h"
#include "core/overlay/ScreenInfo.h"

#include <QList>
#include <QMap>
#include <QRectF>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace deskmark {

struct CGSDisplay;
class CornerLabelWindows;
class LabelTextMeasurer;
class PresetStore;
class ProjectStore;
class ScreenProvider;
class SettingsStore;
class SpaceStore;

// The label with the current Space's name in a chosen place of every display. Each
// display's look follows its effective corner settings; a display whose current Space
// has no named project shows nothing (there is no fallback name). A display's window is
// reused across refreshes and only redrawn when what it shows changed.
class CornerOverlayController {
public:
    CornerOverlayController(const ProjectStore& projectStore, const PresetStore& presetStore,
                            const SettingsStore& settings, const SpaceStore& spaceStore,
                            const ScreenProvider& screens, CornerLabelWindows& windows,
                            const LabelTextMeasurer& measurer);

    // Brings every display's label up to date: shows, redraws, restyles or hides it.
    void refresh();
    // Restyles the labels on screen with each display's current background opacity.
    void updateOpacityOnly();
    // Moves the labels on screen by each display's current offsets, without redrawing.
    void updateOffsetOnly();

    // Whether a compositing manager blends windows with what lies below them. Without
    // one, a translucent background would be drawn over black: labels are then drawn
    // with an opaque background and hard edges. On by default; refresh() applies a change.
    bool compositing() const { return compositing_; }
    void setCompositing(bool on) { compositing_ = on; }

    // The screen (by name) whose active window is full screen now, if any. While the
    // "hideLabelsOverFullScreen" setting is on, that screen shows no label; refresh()
    // applies a change.
    void setFullScreenScreen(const std::optional<QString>& screenName) {
        fullScreenScreen_ = screenName;
    }

    // The displays that show the desktop overview now.
    const QSet<QString>& mcDisplays() const { return mcDisplays_; }
    void setMcDisplays(const QSet<QString>& displays) { mcDisplays_ = displays; }
    // Fades out the labels along the top edge of the displays in mcDisplays() (the
    // overview needs that room) and fades every other label back in.
    void applyMissionControlVisibility();

    // The display's label colours: its Space's preset colours, or white on black when
    // the display's colour mode asks for the default colours. Only the preset is read.
    ColorPair resolveColors(const SpaceStyle& style, const QString& displayUUID) const;

    // The display's effective corner settings, as the settings hold them.
    static CornerLabelStyle style(const SettingsStore& settings, const QString& displayUUID);

private:
    // What one display shows, before it is compared with what it showed.
    struct Wanted {
        CornerLabel label;
        RgbColor background;
        double bgOpacity = 1;
        QRectF base;
        QRectF visibleFrame;
    };
    struct BaseLayout {
        QRectF frame;
        QRectF visibleFrame;
    };

    std::optional<Wanted> wanted(const CGSDisplay& display,
                                 const QList<ScreenInfo>& screens) const;
    void update(const QString& displayUUID, const Wanted& wanted);
    void takeDown(const QString& displayUUID);
    // The background opacity a label is drawn with: the setting's, or full without
    // compositing.
    double shownOpacity(const QString& displayUUID) const;

    const ProjectStore& projectStore_;
    const PresetStore& presetStore_;
    const SettingsStore& settings_;
    const SpaceStore& spaceStore_;
    const ScreenProvider& screens_;
    CornerLabelWindows& windows_;
    const LabelTextMeasurer& measurer_;
    bool compositing_ = true;
    std::optional<QString> fullScreenScreen_;

    // Displays that have a window, shown or not, in the order their windows were made.
    QStringList windowDisplays_;
    // What each shown label was last drawn as; absent for displays without a label.
    QMap<QString, CornerLabel> lastKey_;
    QMap<QString, QString> lastBg_;
    QMap<QString, double> lastOpacity_;
    QMap<QString, BaseLayout> baseLayout_;
    QSet<QString> mcDisplays_;
    // Windows faded out for the overview.
    QSet<QString> mcHidden_;
};

} // namespace deskmark
