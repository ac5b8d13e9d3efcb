#include "platform/linux/LinuxSessionFacts.h"

#include "core/app/HotKeyBindings.h"
#include "core/app/HotKeyManager.h"
#include "core/model/SettingsStore.h"
#include "core/spaces/SpaceStore.h"
#include "platform/linux/DBusInputSourceSwitcher.h"
#include "platform/linux/StatusNotifierItem.h"
#include "platform/linux/SessionPlatform.h"

#include <QSystemTrayIcon>

namespace deskmark {

PermissionsPaneModel::SessionFacts
LinuxSessionFacts::gather(const SpaceStore& spaces, const SettingsStore& settings,
                          const HotKeyBindings& bindings, const HotKeyManager& manager,
                          DBusInputSourceSwitcher& inputMethods, SessionPlatform& platform) {
    using Model = PermissionsPaneModel;
    Model::SessionFacts facts;
    facts.spaceSource = platform.backend().name();
    // EWMH desktops span every monitor, i3 workspaces belong to one output each: either
    // way every Space is counted once.
    facts.desktops = int(spaces.liveSpaceUUIDs().size());
    if (StatusNotifierItem::watcherAvailable())
        facts.panelItem = Model::PanelItem::StatusNotifier;
    else if (QSystemTrayIcon::isSystemTrayAvailable())
        facts.panelItem = Model::PanelItem::Tray;
    for (const HotKeyAction action : allHotKeyActions) {
        if (settings.hotKey(action))
            facts.hotKeys << Model::HotKeyState{action,
                                                manager.isRegistered(bindings.token(action))};
    }
    facts.inputMethod = inputMethods.framework();
    facts.keysBoundByWindowManager = platform.hotKeyRegistrar().boundByWindowManager();
    facts.compositor = platform.isCompositing();
    return facts;
}

} // namespace deskmark
