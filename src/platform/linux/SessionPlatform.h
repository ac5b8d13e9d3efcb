#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/WindowServerBackend.h"

#include <memory>

namespace deskmark {

class HotKeyRegistrar;
class Scheduler;
class SwayLabelPlacer;
class X11ScreenWatcher;
class WindowMover;
class WindowPlacer;

// The platform pieces that differ between sessions, chosen once at start, in this one
// place, by Qt's platform (X11 or Wayland) and the window manager's backend:
//
// | piece | X11 | Wayland (sway) |
// | --- | --- | --- |
// | Spaces | EWMH or i3 IPC | sway IPC |
// | hot keys | key grabs | sway's bindsym lines run the command line |
// | other programs' windows | listed and moved over X11 | none to list or move |
// | label windows | override-redirect, placed by Qt | placed by sway over its IPC |
// | reserved areas, full screen | docks' struts, the active window | none |
// | compositing | while a compositing manager runs | always |
// | panel item | StatusNotifierItem, else an XEmbed tray icon | StatusNotifierItem |
//
// Under Wayland nothing here opens an X11 connection, even where Xwayland runs.
class SessionPlatform {
public:
    explicit SessionPlatform(Scheduler& scheduler);
    ~SessionPlatform();
    SessionPlatform(const SessionPlatform&) = delete;
    SessionPlatform& operator=(const SessionPlatform&) = delete;

    // Whether Qt runs on Wayland ("wayland" platform) rather than X11.
    bool isWayland() const { return wayland_; }

    WindowServerBackend& backend() { return backend_; }
    HotKeyRegistrar& hotKeyRegistrar() { return *hotKeys_; }
    WindowMover& windowMover() { return *windowMover_; }
    // Who places the label windows; null where Qt places them itself (X11).
    WindowPlacer* labelPlacer() const;
    // Whether other programs' windows can be read (the capture of the active window).
    bool readsX11Windows() const { return !wayland_; }
    // What X11 tells about docks, the compositing manager and full-screen windows; null
    // under Wayland.
    X11ScreenWatcher* screenWatcher() const { return screenWatcher_.get(); }
    // Whether translucent windows are blended with what lies below them.
    bool isCompositing() const;
    // The panel item for this session; logs which one it chose.
    std::unique_ptr<StatusItem> createStatusItem(QObject* parent = nullptr) const;

private:
    bool wayland_;
    WindowServerBackend backend_;
    std::unique_ptr<HotKeyRegistrar> hotKeys_;
    std::unique_ptr<WindowMover> windowMover_;
    std::unique_ptr<SwayLabelPlacer> labelPlacer_;
    std::unique_ptr<X11ScreenWatcher> screenWatcher_;
};

} // namespace deskmark
