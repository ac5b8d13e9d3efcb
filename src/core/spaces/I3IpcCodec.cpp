#include "core/spaces/I3IpcCodec.h"

#include <cstring>

namespace deskmark {

namespace {

constexpr char kMagic[] = "i3-ipc";
constexpr qsizetype kMagicSize = sizeof(kMagic) - 1;
constexpr qsizetype kHeaderSize = kMagicSize + 2 * qsizetype(sizeof(quint32));
constexpr quint32 kEventBit = 0x80000000u;

QByteArray frame(quint32 type, const QByteArray& payload) {
    QByteArray message(kMagic, kMagicSize);
    const quint32 header[2] = {quint32(payload.size()), type};
    message.append(reinterpret_cast<const char*>(header), sizeof(header));
    return message + payload;
}

quint32 wordAt(const QByteArray& data, qsizetype offset) {
    quint32 word = 0;
    std::memcpy(&word, data.constData() + offset, sizeof(word));
    return word;
}

} // namespace

QByteArray I3IpcCodec::encode(quint32 type, const QByteArray& payload) {
    return frame(type, payload);
}

QByteArray I3IpcCodec::encodeEvent(quint32 event, const QByteArray& payload) {
    return frame(event | kEventBit, payload);
}

void I3IpcCodec::feed(const QByteArray& bytes) {
    if (!broken_)
        buffer_ += bytes;
}

std::optional<I3IpcCodec::Message> I3IpcCodec::next() {
    if (broken_ || buffer_.size() < kHeaderSize)
        return std::nullopt;
    const quint32 length = wordAt(buffer_, kMagicSize);
    if (!buffer_.startsWith(QByteArrayView(kMagic, kMagicSize)) || length > kLargestPayload) {
        broken_ = true;
        buffer_.clear();
        return std::nullopt;
    }
    if (buffer_.size() < kHeaderSize + qsizetype(length))
        return std::nullopt;
    const quint32 type = wordAt(buffer_, kMagicSize + qsizetype(sizeof(quint32)));
    Message message{(type & kEventBit) != 0, type & ~kEventBit, buffer_.mid(kHeaderSize, length)};
    buffer_.remove(0, kHeaderSize + length);
    return message;
}

void I3IpcCodec::reset() {
    buffer_.clear();
    broken_ = false;
}

} // namespace deskmark
