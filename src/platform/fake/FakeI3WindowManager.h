#pragma once

#include "core/spaces/I3IpcChannel.h"
#include "core/spaces/I3IpcCodec.h"

#include <QList>
#include <QStringList>

namespace deskmark {

// An i3 in memory, seen through its IPC socket: it answers GET_OUTPUTS, GET_WORKSPACES
// and SUBSCRIBE as i3 does, carries out `workspace "NAME"` commands (the workspace shows
// on its output, which takes the focus) and sends workspace events to subscribers.
// Messages go out in order after each write has been handled, never from inside a
// handler of an earlier one. Tests can restart it, refuse connections and replace its
// outputs.
class FakeI3WindowManager : public I3IpcChannel {
    Q_OBJECT
public:
    struct Output {
        QString name;
        bool primary = false;
    };
    struct Workspace {
        QString name;
        QString output;
        bool visible = false;
    };

    using I3IpcChannel::I3IpcChannel;

    void open() override;
    void close() override;
    bool write(const QByteArray& bytes) override;

    void setOutputs(const QList<Output>& outputs);
    void setWorkspaces(const QList<Workspace>& workspaces, const QString& focusedOutput);
    // Ends the connection as a window manager that restarts or exits does.
    void drop();
    void refuseConnections(bool refuse) { refusing_ = refuse; }
    // Replaces the outputs and tells subscribers, as after a monitor was plugged in.
    void replugOutputs(const QList<Output>& outputs);

    bool isOpen() const { return open_; }
    int connectionCount() const { return connections_; }
    // Every command run, in order.
    const QStringList& commands() const { return commands_; }
    QString focusedOutput() const { return focusedOutput_; }
    QString visibleOn(const QString& output) const;

private:
    void handle(const I3IpcCodec::Message& request);
    QByteArray runCommand(const QString& command);
    QByteArray outputsReply() const;
    QByteArray workspacesReply() const;
    void send(const QByteArray& message);
    void deliver();
    void sendEvent(quint32 event, const QByteArray& payload);

    QList<Output> outputs_;
    QList<Workspace> workspaces_;
    QString focusedOutput_;
    QStringList subscriptions_;
    QStringList commands_;
    I3IpcCodec inbox_;
    QList<QByteArray> outbox_;
    bool delivering_ = false;
    bool open_ = false;
    bool refusing_ = false;
    int connections_ = 0;
};

} // namespace deskmark
