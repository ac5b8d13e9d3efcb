#include "platform/linux/SessionPlatform.h"

#include "core/overlay/SwayLabelPlacer.h"
#include "core/spaces/I3IpcWindowServer.h"
#include "platform/linux/SwitchingStatusItem.h"
#include "platform/linux/WaylandHotKeyRegistrar.h"
#include "platform/linux/WaylandWindowMover.h"
#include "platform/linux/X11HotKeyRegistrar.h"
#include "platform/linux/X11ScreenWatcher.h"
#include "platform/linux/X11WindowMover.h"

#include <QGuiApplication>

namespace deskmark {

SessionPlatform::SessionPlatform(Scheduler& scheduler)
    : wayland_(QGuiApplication::platformName() == QLatin1String("wayland")), backend_(scheduler) {
    if (wayland_) {
        hotKeys_ = std::make_unique<WaylandHotKeyRegistrar>();
        windowMover_ = std::make_unique<WaylandWindowMover>();
        if (I3IpcWindowServer* sway = backend_.sway()) {
            labelPlacer_ = std::make_unique<SwayLabelPlacer>(*sway, scheduler,
                                                             QGuiApplication::desktopFileName());
            // Qt maps a window within show(), before any command sent then reaches sway:
            // the rules go out with each connection, ahead of the layout that brings labels.
            QObject::connect(sway, &I3IpcWindowServer::connected, labelPlacer_.get(),
                             &SwayLabelPlacer::installRules);
        }
    } else {
        hotKeys_ = std::make_unique<X11HotKeyRegistrar>();
        windowMover_ = std::make_unique<X11WindowMover>();
        screenWatcher_ = std::make_unique<X11ScreenWatcher>();
    }
}

SessionPlatform::~SessionPlatform() = default;

WindowPlacer* SessionPlatform::labelPlacer() const {
    return labelPlacer_.get();
}

bool SessionPlatform::isCompositing() const {
    return wayland_ || (screenWatcher_ && screenWatcher_->compositing());
}

std::unique_ptr<StatusItem> SessionPlatform::createStatusItem(QObject* parent) const {
    // XEmbed tray icons are an X11 protocol.
    return std::make_unique<SwitchingStatusItem>(parent, !wayland_);
}

} // namespace deskmark
