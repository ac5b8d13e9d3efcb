#pragma once

#include <QByteArray>
#include <QObject>

namespace deskmark {

// A byte stream to the window manager's IPC socket (i3 or sway). The platform finds the
// socket afresh on every open(), so a window manager that came back under another socket
// is found again.
class I3IpcChannel : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    ~I3IpcChannel() override = default;

    // Connects; later, from the event loop, emits opened() or, when no socket answered,
    // closed().
    virtual void open() = 0;
    virtual void close() = 0;
    // Queues bytes for the window manager; false when the channel is not open.
    virtual bool write(const QByteArray& bytes) = 0;

Q_SIGNALS:
    void opened();
    void received(const QByteArray& bytes);
    // The connection ended or could not be made.
    void closed();
};

} // namespace deskmark
