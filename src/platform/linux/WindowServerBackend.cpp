#include "platform/linux/WindowServerBackend.h"

#include "core/spaces/I3IpcWindowServer.h"
#include "platform/linux/I3IpcSocket.h"
#include "platform/linux/X11RootClient.h"
#include "platform/linux/X11WindowServer.h"

#include <QEventLoop>
#include <QTimer>

namespace deskmark {

namespace {

QString environment(const char* name) { return QString::fromLocal8Bit(qgetenv(name)); }

} // namespace

WindowServerBackend::WindowServerBackend(Scheduler& scheduler) {
    if (!environment("SWAYSOCK").isEmpty()) {
        kind_ = Kind::Sway;
        socket_ = std::make_unique<I3IpcSocket>([] { return QStringList{environment("SWAYSOCK")}; });
    } else {
        root_ = std::make_unique<X11RootClient>();
        if (!environment("I3SOCK").isEmpty() ||
            !root_->utf8List(X11RootClient::Property::I3SocketPath).value(0).isEmpty()) {
            kind_ = Kind::I3;
            socket_ = std::make_unique<I3IpcSocket>([this] { return i3SocketPaths(); });
        } else {
            root_.reset();
            ewmh_ = std::make_unique<X11WindowServer>();
            return;
        }
    }
    ipc_ = std::make_unique<I3IpcWindowServer>(*socket_, scheduler, name());
    if (root_) {
        // i3 names its outputs after the RandR monitors, whose EDID it does not report.
        ipc_->setMonitorFacts([this](const QString& outputName) -> std::optional<MonitorIdentity> {
            for (const RandrMonitor& monitor : root_->monitors()) {
                if (monitor.name == outputName)
                    return MonitorIdentity(monitor.name, monitor.outputs.value(0), monitor.edid);
            }
            return std::nullopt;
        });
    }
    ipc_->start();
}

WindowServerBackend::~WindowServerBackend() = default;

QString WindowServerBackend::name() const {
    switch (kind_) {
    case Kind::Sway:
        return QStringLiteral("sway");
    case Kind::I3:
        return QStringLiteral("i3");
    case Kind::Ewmh:
        break;
    }
    return QStringLiteral("EWMH");
}

WindowServer& WindowServerBackend::windowServer() {
    return ipc_ ? static_cast<WindowServer&>(*ipc_) : *ewmh_;
}

SpaceRequester& WindowServerBackend::requester() {
    return ipc_ ? static_cast<SpaceRequester&>(*ipc_) : *ewmh_;
}

DesktopNamer& WindowServerBackend::namer() {
    return ipc_ ? static_cast<DesktopNamer&>(*ipc_) : *ewmh_;
}

I3IpcWindowServer* WindowServerBackend::sway() {
    return kind_ == Kind::Sway ? ipc_.get() : nullptr;
}

bool WindowServerBackend::waitForLayout(std::chrono::milliseconds timeout) {
    if (!ipc_ || ipc_->hasLayout())
        return true;
    QEventLoop loop;
    QObject::connect(ipc_.get(), &WindowServer::activeSpaceChanged, &loop, &QEventLoop::quit);
    QTimer::singleShot(timeout, &loop, &QEventLoop::quit);
    loop.exec();
    return ipc_->hasLayout();
}

QStringList WindowServerBackend::i3SocketPaths() const {
    return {environment("I3SOCK"), root_->utf8List(X11RootClient::Property::I3SocketPath).value(0)};
}

} // namespace deskmark
