#include "core/overlay/CornerOverlayController.h"

#include "core/model/PresetStore.h"
#include "core/model/ProjectStore.h"
#include "core/model/SettingsStore.h"
#include "core/overlay/CornerLabelLayout.h"
#include "core/overlay/CornerLabelWindows.h"
#include "core/overlay/ScreenProvider.h"
#include "core/spaces/SpaceStore.h"

#include <algorithm>

namespace deskmark {

namespace {
const RgbColor kBlack{0, 0, 0};
const RgbColor kWhite{1, 1, 1};
} // namespace

CornerOverlayController::CornerOverlayController(const ProjectStore& projectStore,
                                                 const PresetStore& presetStore,
                                                 const SettingsStore& settings,
                                                 const SpaceStore& spaceStore,
                                                 const ScreenProvider& screens,
                                                 CornerLabelWindows& windows,
                                                 const LabelTextMeasurer& measurer)
    : projectStore_(projectStore), presetStore_(presetStore), settings_(settings),
      spaceStore_(spaceStore), screens_(screens), windows_(windows), measurer_(measurer) {}

void CornerOverlayController::refresh() {
    const QList<ScreenInfo> screens = screens_.screens();
    QSet<QString> listed;
    for (const CGSDisplay& display : spaceStore_.displays()) {
        listed.insert(display.displayUUID);
        if (const std::optional<Wanted> label = wanted(display, screens))
            update(display.displayUUID, *label);
        else
            takeDown(display.displayUUID);
    }
    // A display that went away takes its label with it.
    const QList<QString> shown = lastKey_.keys();
    for (const QString& display : shown) {
        if (!listed.contains(display))
            takeDown(display);
    }
    // A label that moved into or out of the top row while the overview is open.
    applyMissionControlVisibility();
}

std::optional<CornerOverlayController::Wanted>
CornerOverlayController::wanted(const CGSDisplay& display, const QList<ScreenInfo>& screens) const {
    const QString& uuid = display.displayUUID;
    if (!settings_.cornerOverlayEnabled(uuid) || !display.currentUUID)
        return std::nullopt;
    const std::optional<Project> project = projectStore_.projectForSpace(*display.currentUUID);
    if (!project || project->name.isEmpty())
        return std::nullopt;
    const auto screen = std::find_if(screens.cbegin(), screens.cend(), [&](const ScreenInfo& s) {
        return spaceStore_.displayUUID(s.name) == uuid;
    });
    if (screen == screens.cend())
        return std::nullopt;
    if (fullScreenScreen_ == screen->name && settings_.hideLabelsOverFullScreen())
        return std::nullopt;

    const ColorPair colors = resolveColors(SpaceStyle{project->name, project->presetID}, uuid);
    const CornerLabelStyle look = style(settings_, uuid);
    const CornerLabelLayout::Geometry geometry =
        CornerLabelLayout::layout(project->name, look, screen->visibleFrame, measurer_);

    Wanted result;
    result.label =
        CornerLabel{project->name,  geometry.fontSize,     look.weight,         colors.text,
                    geometry.frame, geometry.cornerRadius, geometry.textOrigin, compositing_};
    result.background = colors.bg;
    result.bgOpacity = shownOpacity(uuid);
    result.base = geometry.base;
    result.visibleFrame = screen->visibleFrame;
    return result;
}

CornerLabelStyle CornerOverlayController::style(const SettingsStore& settings,
                                                const QString& displayUUID) {
    CornerLabelStyle style;
    style.fontSize = settings.cornerFontSize(displayUUID);
    style.weight = settings.cornerWeight(displayUUID);
    style.vPadding = settings.cornerVPadding(displayUUID);
    style.shape = settings.cornerShape(displayUUID);
    style.position = settings.cornerPosition(displayUUID);
    style.margin = settings.cornerMargin(displayUUID);
    style.offsetX = settings.cornerOffsetX(displayUUID);
    style.offsetY = settings.cornerOffsetY(displayUUID);
    return style;
}

void CornerOverlayController::update(const QString& displayUUID, const Wanted& wanted) {
    baseLayout_.insert(displayUUID, BaseLayout{wanted.base, wanted.visibleFrame});
    const QString bg = wanted.background.deskmarkHex();
    const auto key = lastKey_.constFind(displayUUID);
    if (key != lastKey_.cend() && *key == wanted.label && lastBg_.value(displayUUID) == bg) {
        // The same label: at most its background opacity differs.
        if (lastOpacity_.value(displayUUID) != wanted.bgOpacity) {
            windows_.setBackground(displayUUID, wanted.background, wanted.bgOpacity);
            lastOpacity_.insert(displayUUID, wanted.bgOpacity);
        }
        return;
    }
    windows_.show(displayUUID, wanted.label, wanted.background, wanted.bgOpacity);
    if (!windowDisplays_.contains(displayUUID))
        windowDisplays_ << displayUUID;
    lastKey_.insert(displayUUID, wanted.label);
    lastBg_.insert(displayUUID, bg);
    lastOpacity_.insert(displayUUID, wanted.bgOpacity);
}

void CornerOverlayController::takeDown(const QString& displayUUID) {
    baseLayout_.remove(displayUUID);
    if (!lastKey_.remove(displayUUID))
        return; // nothing on screen
    lastBg_.remove(displayUUID);
    lastOpacity_.remove(displayUUID);
    windows_.hide(displayUUID);
}

double CornerOverlayController::shownOpacity(const QString& displayUUID) const {
    return compositing_ ? settings_.cornerBgOpacity(displayUUID) : 1.0;
}

void CornerOverlayController::updateOpacityOnly() {
    for (auto it = lastBg_.cbegin(); it != lastBg_.cend(); ++it) {
        const double opacity = shownOpacity(it.key());
        if (lastOpacity_.value(it.key()) == opacity)
            continue;
        windows_.setBackground(it.key(), RgbColor::fromDeskmarkHex(*it).value_or(kBlack),
                               opacity);
        lastOpacity_.insert(it.key(), opacity);
    }
}

void CornerOverlayController::updateOffsetOnly() {
    for (auto it = baseLayout_.cbegin(); it != baseLayout_.cend(); ++it) {
        const QString& display = it.key();
        const QRectF frame = CornerLabelLayout::offset(
            it->frame, settings_.cornerOffsetX(display), settings_.cornerOffsetY(display),
            settings_.cornerMargin(display), it->visibleFrame);
        const auto drawn = lastKey_.find(display);
        if (drawn == lastKey_.end() || drawn->frame == frame)
            continue;
        windows_.move(display, frame.topLeft());
        drawn->frame = frame;
    }
}

void CornerOverlayController::applyMissionControlVisibility() {
    for (const QString& display : std::as_const(windowDisplays_)) {
        const bool hidden = mcDisplays_.contains(display) &&
                            CornerLabelLayout::isTopRow(settings_.cornerPosition(display));
        if (hidden == mcHidden_.contains(display))
            continue;
        windows_.fade(display, !hidden);
        if (hidden)
            mcHidden_.insert(display);
        else
            mcHidden_.remove(display);
    }
}

ColorPair CornerOverlayController::resolveColors(const SpaceStyle& style,
                                                 const QString& displayUUID) const {
    if (settings_.cornerColorMode(displayUUID) == CornerColorMode::SpaceColors)
        return presetStore_.colors(style.presetID);
    return ColorPair{kBlack, kWhite};
}

} // namespace deskmark
