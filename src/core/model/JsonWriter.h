#pragma once

#include <QByteArray>
#include <QStringEncoder>
#include <QStringView>
#include <QUuid>

namespace deskmark {

// Appends compact JSON text to one growing buffer, for writing large store files
// without building a QJsonDocument first. The caller writes the punctuation; the writer
// formats strings and UUIDs.
class JsonWriter {
public:
    // capacity: the expected size of the text, to spare growing the buffer.
    explicit JsonWriter(qsizetype capacity = 0);

    // Structural text written as is, such as `{"key":` or `,`.
    void raw(QByteArrayView text);
    // The quoted, escaped UTF-8 form of text. False when text holds a lone surrogate,
    // which UTF-8 cannot carry; the buffer is then unusable.
    bool string(QStringView text);
    // The quoted canonical form: upper case, without braces.
    void uuid(const QUuid& uuid);

    QByteArray take();

private:
    // Room for at least n more bytes; returns where they go.
    char* reserve(qsizetype n) {
        if (size_ + n > buffer_.size())
            grow(n);
        return data_ + size_;
    }
    void grow(qsizetype n);

    QStringEncoder utf8_;
    QByteArray buffer_;
    char* data_ = nullptr; // buffer_.data(), kept to spare its detach check
    qsizetype size_ = 0;
};

} // namespace deskmark
