#include "core/model/JsonReader.h"

#include <QStringDecoder>
#include <QStringView>

#include <array>
#include <charconv>
#include <cstring>

namespace deskmark {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// The bytes that end a run of plain string content: the closing quote, the escape
// character and the control characters, which must not appear unescaped.
constexpr std::array<bool, 256> kEndsPlainRun = [] {
    std::array<bool, 256> table{};
    for (int c = 0; c < 0x20; ++c)
        table[c] = true;
    table['"'] = table['\\'] = true;
    return table;
}();

// Eight bytes in one word: each byte's lowest bit, and each byte's highest bit.
constexpr quint64 kOnes = 0x0101010101010101ULL;
constexpr quint64 kHighBits = 0x8080808080808080ULL;

// Deeper nesting than this is refused rather than risking the stack while skipping.
constexpr int kMaxDepth = 512;

} // namespace

JsonReader::JsonReader(const QByteArray& data)
    : source_(data), data_(source_.constData()), size_(source_.size()) {
    // A byte-order mark is tolerated, as editors sometimes add one.
    if (QByteArrayView(source_).startsWith("\xEF\xBB\xBF"))
        pos_ = 3;
}

std::optional<QJsonDocument> JsonReader::strictDocument(const QByteArray& data) {
    JsonReader reader(data);
    if (!reader.skipValue() || !reader.atEnd())
        return std::nullopt;
    // Qt drops a U+FEFF that starts a string when it is written raw, not when it is
    // escaped. In text this reader accepts, those bytes stand only inside strings, once
    // a byte-order mark before the text is gone.
    QByteArray text = data;
    if (text.startsWith("\xEF\xBB\xBF"))
        text.remove(0, 3);
    text.replace("\xEF\xBB\xBF", "\\ufeff");
    QJsonParseError error{};
    QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        return std::nullopt;
    return document;
}

QString JsonReader::text(QByteArrayView utf8) {
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::ConvertInitialBom);
    return decoder(utf8);
}

void JsonReader::skipWhitespace() {
    while (pos_ < size_) {
        const char c = data_[pos_];
        if (c != ' ' && c != '\n' && c != '\r' && c != '\t')
            return;
        ++pos_;
    }
}

bool JsonReader::expect(char c) {
    // Compact text has no white space between tokens: try the character first.
    if (!failed_ && pos_ < size_ && data_[pos_] == c) {
        ++pos_;
        return true;
    }
    skipWhitespace();
    if (failed_ || pos_ >= size_ || data_[pos_] != c) {
        failed_ = true;
        return false;
    }
    ++pos_;
    return true;
}

bool JsonReader::expectLiteral(const char* literal) {
    skipWhitespace();
    const QByteArrayView expected(literal);
    if (failed_ || !QByteArrayView(data_ + pos_, size_ - pos_).startsWith(expected)) {
        failed_ = true;
        return false;
    }
    pos_ += expected.size();
    return true;
}

JsonReader::Type JsonReader::peek() {
    skipWhitespace();
    if (failed_ || pos_ >= size_)
        return Type::Invalid;
    const char c = data_[pos_];
    switch (c) {
    case 'n':
        return Type::Null;
    case 't':
    case 'f':
        return Type::Bool;
    case '"':
        return Type::String;
    case '[':
        return Type::Array;
    case '{':
        return Type::Object;
    default:
        return c == '-' || isDigit(c) ? Type::Number : Type::Invalid;
    }
}

bool JsonReader::readNull() {
    return expectLiteral("null");
}

std::optional<double> JsonReader::readNumber() {
    skipWhitespace();
    if (failed_)
        return std::nullopt;
    // The JSON grammar is narrower than from_chars: no leading zeros, no bare ".5", no
    // "inf". Validate it first, then convert.
    const qsizetype start = pos_;
    const auto digits = [&] {
        const qsizetype first = pos_;
        while (pos_ < size_ && isDigit(data_[pos_]))
            ++pos_;
        return pos_ > first;
    };
    if (pos_ < size_ && data_[pos_] == '-')
        ++pos_;
    bool valid = pos_ < size_ && data_[pos_] == '0' ? (++pos_, true) : digits();
    if (valid && pos_ < size_ && data_[pos_] == '.') {
        ++pos_;
        valid = digits();
    }
    if (valid && pos_ < size_ && (data_[pos_] == 'e' || data_[pos_] == 'E')) {
        ++pos_;
        if (pos_ < size_ && (data_[pos_] == '+' || data_[pos_] == '-'))
            ++pos_;
        valid = digits();
    }
    double value = 0;
    if (valid) {
        const auto result = std::from_chars(data_ + start, data_ + pos_, value);
        valid = result.ec == std::errc() && result.ptr == data_ + pos_;
    }
    if (!valid) {
        failed_ = true;
        return std::nullopt;
    }
    return value;
}

std::optional<QByteArrayView> JsonReader::readStringView() {
    if (!expect('"'))
        return std::nullopt;
    const qsizetype start = pos_;
    // Every byte passed is or-ed in, so that only a string with bytes beyond ASCII needs
    // its UTF-8 checked.
    quint64 seen = skipPlainWords();
    while (pos_ < size_) {
        const auto c = static_cast<unsigned char>(data_[pos_]);
        seen |= c;
        if (!kEndsPlainRun[c]) {
            ++pos_;
            continue;
        }
        if (c == '"') {
            ++pos_;
            const QByteArrayView text(data_ + start, pos_ - 1 - start);
            if ((seen & kHighBits) != 0 && !text.isValidUtf8())
                break;
            return text;
        }
        if (c == '\\') {
            if (!decodeEscapedString(start) || !QByteArrayView(scratch_).isValidUtf8())
                break;
            return QByteArrayView(scratch_);
        }
        break; // a control character, which must be escaped
    }
    failed_ = true;
    return std::nullopt;
}

quint64 JsonReader::skipPlainWords() {
    // Eight bytes at a time while none of them ends a plain run. The classic tests for a
    // zero byte and for a byte below n: (x - 0x01..01 * n) & ~x & 0x80..80.
    const auto hasByteBelow = [](quint64 x, quint64 n) { return (x - kOnes * n) & ~x & kHighBits; };
    quint64 seen = 0;
    while (size_ - pos_ >= 8) {
        quint64 word;
        std::memcpy(&word, data_ + pos_, 8);
        if (hasByteBelow(word, 0x20) || hasByteBelow(word ^ (kOnes * '"'), 1) ||
            hasByteBelow(word ^ (kOnes * '\\'), 1))
            break;
        seen |= word;
        pos_ += 8;
    }
    return seen;
}

std::optional<QString> JsonReader::readString() {
    const auto view = readStringView();
    if (!view)
        return std::nullopt;
    return text(*view);
}

bool JsonReader::decodeEscapedString(qsizetype start) {
    scratch_ = QByteArray(data_ + start, pos_ - start);
    while (pos_ < size_) {
        const auto c = static_cast<unsigned char>(data_[pos_]);
        if (c == '"') {
            ++pos_;
            return true;
        }
        if (c < 0x20)
            return false;
        if (c == '\\') {
            ++pos_;
            if (!appendEscape())
                return false;
        } else {
            scratch_.append(char(c));
            ++pos_;
        }
    }
    return false;
}

bool JsonReader::appendEscape() {
    if (pos_ >= size_)
        return false;
    const char escape = data_[pos_++];
    switch (escape) {
    case '"':
    case '\\':
    case '/':
        scratch_.append(escape);
        return true;
    case 'b':
        scratch_.append('\b');
        return true;
    case 'f':
        scratch_.append('\f');
        return true;
    case 'n':
        scratch_.append('\n');
        return true;
    case 'r':
        scratch_.append('\r');
        return true;
    case 't':
        scratch_.append('\t');
        return true;
    case 'u':
        break;
    default:
        return false;
    }
    const auto hex4 = [&](char16_t& unit) {
        if (size_ - pos_ < 4)
            return false;
        unsigned value = 0;
        const auto result = std::from_chars(data_ + pos_, data_ + pos_ + 4, value, 16);
        if (result.ptr != data_ + pos_ + 4)
            return false;
        unit = char16_t(value);
        pos_ += 4;
        return true;
    };
    // A surrogate stands only in a pair, high then low; alone it is no character, and
    // the text is refused rather than read with a replacement character in its place.
    char16_t units[2] = {};
    if (!hex4(units[0]) || QChar::isLowSurrogate(units[0]))
        return false;
    qsizetype count = 1;
    if (QChar::isHighSurrogate(units[0])) {
        if (!QByteArrayView(data_ + pos_, size_ - pos_).startsWith("\\u"))
            return false;
        pos_ += 2;
        if (!hex4(units[1]) || !QChar::isLowSurrogate(units[1]))
            return false;
        count = 2;
    }
    scratch_.append(QStringView(units, count).toUtf8());
    return true;
}

bool JsonReader::skipValue() {
    return skipValue(0);
}

bool JsonReader::skipValue(int depth) {
    QByteArrayView key;
    switch (peek()) {
    case Type::Null:
        return readNull();
    case Type::Bool:
        return expectLiteral(data_[pos_] == 't' ? "true" : "false");
    case Type::Number:
        return readNumber().has_value();
    case Type::String:
        return readStringView().has_value();
    case Type::Array:
        if (depth >= kMaxDepth || !beginArray())
            break;
        while (nextElement())
            skipValue(depth + 1);
        return !failed_;
    case Type::Object:
        if (depth >= kMaxDepth || !beginObject())
            break;
        while (nextMember(key))
            skipValue(depth + 1);
        return !failed_;
    case Type::Invalid:
        break;
    }
    failed_ = true;
    return false;
}

bool JsonReader::beginArray() {
    containerJustOpened_ = expect('[');
    return containerJustOpened_;
}

bool JsonReader::beginObject() {
    containerJustOpened_ = expect('{');
    return containerJustOpened_;
}

bool JsonReader::nextInContainer(char close) {
    skipWhitespace();
    const bool first = containerJustOpened_;
    containerJustOpened_ = false;
    if (failed_)
        return false;
    if (pos_ < size_ && data_[pos_] == close) {
        ++pos_;
        return false;
    }
    // A closing bracket right after a comma is left to the next value read, which fails.
    return first || expect(',');
}

bool JsonReader::nextElement() {
    return nextInContainer(']');
}

bool JsonReader::nextMember(QByteArrayView& key) {
    if (!nextInContainer('}'))
        return false;
    const auto name = readStringView();
    if (!name || !expect(':'))
        return false;
    key = *name;
    return true;
}

bool JsonReader::atEnd() {
    skipWhitespace();
    return !failed_ && pos_ == size_;
}

} // namespace deskmark
