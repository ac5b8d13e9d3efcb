#pragma once

#include "core/settings/PermissionsPaneModel.h"

#include <QList>
#include <QString>

#include <functional>

namespace deskmark {

class AppCandidateStore;
class HotKeyRegistrar;
class PagerNameSync;
class PresetStore;
class ProjectStore;
class SettingsStore;
class SpaceStore;
class WindowServer;

// One connected display as the panes name it.
struct DisplayEntry {
    QString displayUUID;
    QString title; // the screen's name and size
};

// What the settings panes read and write: the stores, the Space layout and the few
// platform services the panes show. Everything is owned elsewhere and outlives the window.
struct SettingsContext {
    SettingsStore& settings;
    ProjectStore& projects;
    PresetStore& presets;
    const SpaceStore& spaces;
    WindowServer& windowServer;
    HotKeyRegistrar& registrar;
    AppCandidateStore& candidates;
    PagerNameSync& pagerNames;
    // The connected displays, asked afresh whenever a pane redraws.
    std::function<QList<DisplayEntry>()> displays;
    // What the session offers, asked when the Permissions pane shows.
    std::function<PermissionsPaneModel::SessionFacts()> sessionFacts;
    // Restarts the program; false when the restart could not start.
    std::function<bool()> relaunch;
};

} // namespace deskmark
