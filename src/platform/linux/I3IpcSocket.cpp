#include "platform/linux/I3IpcSocket.h"

#include <QLocalSocket>

namespace deskmark {

namespace {
// A listening Unix socket accepts at once; this only bounds a window manager that hangs.
constexpr int kConnectTimeoutMs = 500;
} // namespace

I3IpcSocket::I3IpcSocket(std::function<QStringList()> locate, QObject* parent)
    : I3IpcChannel(parent), locate_(std::move(locate)), socket_(new QLocalSocket(this)) {
    connect(socket_, &QLocalSocket::readyRead, this,
            [this] { Q_EMIT received(socket_->readAll()); });
    connect(socket_, &QLocalSocket::disconnected, this, [this] {
        if (!open_)
            return;
        open_ = false;
        Q_EMIT closed();
    });
}

void I3IpcSocket::open() {
    if (open_)
        return;
    for (const QString& path : locate_()) {
        if (path.isEmpty())
            continue;
        socket_->connectToServer(path);
        if (socket_->waitForConnected(kConnectTimeoutMs)) {
            open_ = true;
            announce(&I3IpcChannel::opened);
            return;
        }
        socket_->abort();
    }
    announce(&I3IpcChannel::closed);
}

void I3IpcSocket::close() {
    if (!open_)
        return;
    open_ = false;
    socket_->abort();
    announce(&I3IpcChannel::closed);
}

bool I3IpcSocket::write(const QByteArray& bytes) {
    if (!open_)
        return false;
    return socket_->write(bytes) == bytes.size();
}

void I3IpcSocket::announce(void (I3IpcChannel::*signal)()) {
    QMetaObject::invokeMethod(this, [this, signal] { Q_EMIT(this->*signal)(); },
                              Qt::QueuedConnection);
}

} // namespace deskmark
