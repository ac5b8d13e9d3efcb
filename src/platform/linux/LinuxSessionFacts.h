#pragma once

#include "core/settings/PermissionsPaneModel.h"

namespace deskmark {

class DBusInputSourceSwitcher;
class HotKeyBindings;
class HotKeyManager;
class SessionPlatform;
class SettingsStore;
class SpaceStore;

// Asks the session what it offers: the window manager's desktops, a place in the
// panel, the hot-key grabs, an input-method framework and a compositor.
class LinuxSessionFacts {
public:
    static PermissionsPaneModel::SessionFacts
    gather(const SpaceStore& spaces, const SettingsStore& settings, const HotKeyBindings& bindings,
           const HotKeyManager& manager, DBusInputSourceSwitcher& inputMethods,
           SessionPlatform& platform);
};

} // namespace deskmark
