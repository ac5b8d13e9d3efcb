#pragma once

#include <QByteArray>

#include <optional>

namespace deskmark {

// The wire format of the i3 IPC socket, which sway speaks as well. A message is the magic
// "i3-ipc", the payload's length and the message type as 32-bit integers in the host's
// byte order, then the payload (JSON text). Replies carry the type of their request, in
// the order the requests were sent; events carry their event number with the high bit
// set and may come between replies.
//
// encode() frames a request; a codec instance collects bytes as they arrive and hands out
// whole messages.
class I3IpcCodec {
public:
    enum Type : quint32 { RunCommand = 0, GetWorkspaces = 1, Subscribe = 2, GetOutputs = 3 };
    enum Event : quint32 { WorkspaceEvent = 0, OutputEvent = 1 };

    struct Message {
        bool isEvent = false;
        quint32 type = 0; // without the event bit
        QByteArray payload;
    };

    // A window manager's answer is a few kilobytes; anything near this is not i3 talking.
    static constexpr quint32 kLargestPayload = 64u << 20;

    static QByteArray encode(quint32 type, const QByteArray& payload = {});
    // The same framing for an event, as a window manager sends it.
    static QByteArray encodeEvent(quint32 event, const QByteArray& payload);

    void feed(const QByteArray& bytes);
    // The next whole message; nothing while more bytes are needed or once the stream is
    // broken.
    std::optional<Message> next();
    // The bytes were not i3 IPC (a wrong magic or an absurd length). Nothing more can be
    // read from this stream; the connection has to start over.
    bool isBroken() const { return broken_; }
    // Forgets everything, for a new connection.
    void reset();

private:
    QByteArray buffer_;
    bool broken_ = false;
};

} // namespace deskmark
