#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QJsonDocument>
#include <QString>

#include <optional>

namespace deskmark {

// A strict pull reader over one UTF-8 JSON text (RFC 8259), for decoding large store
// files straight into records without building a QJsonDocument first. Text that is not
// valid UTF-8, or escapes a surrogate that is not part of a pair, is refused like any
// other syntax error: nothing is ever read with a replacement character.
//
// The caller walks the text in order: peek() tells what the next value is, a read call
// consumes it. Any syntax error, and any read that does not match the next value, sets a
// sticky failure: every later call then fails too, so a decoder checks once, with
// atEnd() after the last value. Objects and arrays are walked like this:
//
//     reader.beginObject();
//     QByteArrayView key;
//     while (reader.nextMember(key)) { ... read or skip the value ... }
//
// Keys are handed out as UTF-8 views that stay valid until the next call.
class JsonReader {
public:
    enum class Type { Null, Bool, Number, String, Array, Object, Invalid };

    explicit JsonReader(const QByteArray& data);

    // The document of a whole text that this reader accepts, parsed by Qt; nothing for a
    // text it refuses. Qt's own parser takes lone surrogate escapes, which no UTF-8 file
    // can be written back with, so a store read through QJsonDocument checks here first.
    static std::optional<QJsonDocument> strictDocument(const QByteArray& data);

    // UTF-8 as text, a leading U+FEFF included: it is part of the string here, not a
    // byte-order mark to drop.
    static QString text(QByteArrayView utf8);

    // Marks the text as unusable, for a decoder that finds a value it cannot accept.
    void fail() { failed_ = true; }

    // The type of the next value, judged by its first character; nothing is consumed.
    Type peek();

    bool readNull();
    std::optional<double> readNumber();
    std::optional<QString> readString();
    // The next string as UTF-8 without making a QString; valid until the next call.
    std::optional<QByteArrayView> readStringView();
    bool skipValue();

    bool beginArray();
    // True when another element follows; false at the closing bracket (or on failure).
    bool nextElement();
    bool beginObject();
    // True with the key when another member follows (its value comes next); false at the
    // closing brace (or on failure).
    bool nextMember(QByteArrayView& key);

    // True when nothing failed and only white space is left after the values read.
    bool atEnd();

private:
    void skipWhitespace();
    bool expect(char c);
    bool expectLiteral(const char* literal);
    // Continues a container: true when an element follows, false at `close`.
    bool nextInContainer(char close);
    bool skipValue(int depth);
    // Decodes the escapes of a string into scratch_; pos_ is just past the opening quote.
    bool decodeEscapedString(qsizetype start);
    // Advances over whole 8-byte words of plain string content; returns their bytes or-ed.
    quint64 skipPlainWords();
    bool appendEscape();

    QByteArray source_; // keeps the text alive for the views handed out
    const char* data_;
    qsizetype size_;
    qsizetype pos_ = 0;
    bool failed_ = false;
    bool containerJustOpened_ = false;
    QByteArray scratch_;
};

} // namespace deskmark
