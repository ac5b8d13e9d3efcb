#pragma once

#include <QString>

#include <chrono>
#include <memory>

namespace deskmark {

class DesktopNamer;
class I3IpcSocket;
class I3IpcWindowServer;
class Scheduler;
class SpaceRequester;
class WindowServer;
class X11RootClient;
class X11WindowServer;

// The session's source of Spaces, chosen once at start by what the session offers:
// $SWAYSOCK means sway; $I3SOCK or an I3_SOCKET_PATH property on the X root window means
// i3; anything else is an X11 window manager with EWMH desktops. i3 and sway are both
// read over their IPC socket, each output a display with workspaces of its own.
class WindowServerBackend {
public:
    enum class Kind { Ewmh, I3, Sway };

    explicit WindowServerBackend(Scheduler& scheduler);
    ~WindowServerBackend();

    Kind kind() const { return kind_; }
    // "EWMH", "i3" or "sway", as `--diagnose` names it.
    QString name() const;

    WindowServer& windowServer();
    SpaceRequester& requester();
    DesktopNamer& namer();
    // sway's IPC connection; null for the other backends.
    I3IpcWindowServer* sway();

    // The EWMH layout is there at once; the IPC one arrives with the first answers. Runs
    // the event loop until it has, at most for `timeout`; false when it has not.
    bool waitForLayout(std::chrono::milliseconds timeout);

private:
    // Where i3 listens: $I3SOCK, then what the root window says (the newer when i3 was
    // restarted under another socket).
    QStringList i3SocketPaths() const;

    Kind kind_ = Kind::Ewmh;
    std::unique_ptr<X11RootClient> root_;
    std::unique_ptr<X11WindowServer> ewmh_;
    std::unique_ptr<I3IpcSocket> socket_;
    std::unique_ptr<I3IpcWindowServer> ipc_;
};

} // namespace deskmark
