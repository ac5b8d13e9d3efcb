#pragma once

#include "core/spaces/I3IpcChannel.h"

#include <QStringList>

#include <functional>

class QLocalSocket;

namespace deskmark {

// The IPC socket of i3 or sway as an I3IpcChannel (a Unix socket; nothing here is X11 or
// Wayland). Each open() asks `locate` for the socket paths to try, in order, and
// connects to the first that answers.
class I3IpcSocket : public I3IpcChannel {
    Q_OBJECT
public:
    explicit I3IpcSocket(std::function<QStringList()> locate, QObject* parent = nullptr);

    void open() override;
    void close() override;
    bool write(const QByteArray& bytes) override;

private:
    void announce(void (I3IpcChannel::*signal)());

    std::function<QStringList()> locate_;
    QLocalSocket* socket_;
    bool open_ = false;
};

} // namespace deskmark
