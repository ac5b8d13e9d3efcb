#include "app/AppDelegate.h"

#include "core/switcher/SpaceSwitcherController.h"

// The actions that hot keys and the command line share, and the command interface on
// the session bus through which the command line reaches the running agent.

namespace deskmark {

void AppDelegate::performAction(HotKeyAction action) {
    // The preset item is a submenu: its hot key applies the next preset instead.
    if (action == HotKeyAction::Preset) {
        quickApplyNextPreset();
        return;
    }
    menu_->actionFor(action)->trigger();
}

void AppDelegate::publishCommandInterface() {
    commandInterface_ = std::make_unique<DBusControlService>(DBusControlService::Handlers{
        [this](HotKeyAction action) { performAction(action); },
        [this](const QString& name) { return switchToProject(name); }});
    commandInterface_->publish();
}

bool AppDelegate::switchToProject(const QString& name) {
    const std::optional<SpaceSwitcherController::Tile> tile =
        SpaceSwitcherController::firstTileOfProject(spaceStore_.displays(), projectStore_, name);
    if (!tile)
        return false;
    switchSpace(tile->spaceUUID, tile->displayUUID);
    return true;
}

} // namespace deskmark
