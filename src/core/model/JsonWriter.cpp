#include "core/model/JsonWriter.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace deskmark {

namespace {

constexpr char kHexLower[] = "0123456789abcdef";
constexpr char kHexUpper[] = "0123456789ABCDEF";

char* putHex(char* out, quint64 value, int digits) {
    for (int i = digits - 1; i >= 0; --i)
        *out++ = kHexUpper[(value >> (4 * i)) & 0xF];
    return out;
}

bool needsEscape(char16_t unit) {
    return unit < 0x20 || unit == u'"' || unit == u'\\';
}

// The position of the first unit from `from` on that needs an escape, four units at a
// time while none does: (x - 0x0001..0001 * n) & ~x & 0x8000..8000 tells whether a
// 16-bit lane of x is below n.
qsizetype nextEscape(QStringView text, qsizetype from) {
    constexpr quint64 kOnes = 0x0001000100010001ULL;
    constexpr quint64 kHighBits = 0x8000800080008000ULL;
    const auto hasLaneBelow = [](quint64 x, quint64 n) { return (x - kOnes * n) & ~x & kHighBits; };
    qsizetype i = from;
    for (; text.size() - i >= 4; i += 4) {
        quint64 lanes;
        std::memcpy(&lanes, text.utf16() + i, 8);
        if (hasLaneBelow(lanes, 0x20) || hasLaneBelow(lanes ^ (kOnes * u'"'), 1) ||
            hasLaneBelow(lanes ^ (kOnes * u'\\'), 1))
            break;
    }
    while (i < text.size() && !needsEscape(text[i].unicode()))
        ++i;
    return i;
}

char* putEscape(char* out, char16_t unit) {
    *out++ = '\\';
    switch (unit) {
    case u'"':
        *out++ = '"';
        break;
    case u'\\':
        *out++ = '\\';
        break;
    case u'\n':
        *out++ = 'n';
        break;
    case u'\r':
        *out++ = 'r';
        break;
    case u'\t':
        *out++ = 't';
        break;
    default:
        out = std::copy_n("u00", 3, out);
        *out++ = kHexLower[unit >> 4];
        *out++ = kHexLower[unit & 0xF];
    }
    return out;
}

} // namespace

JsonWriter::JsonWriter(qsizetype capacity)
    : utf8_(QStringConverter::Utf8, QStringConverter::Flag::Stateless) {
    if (capacity > 0)
        grow(capacity);
}

void JsonWriter::grow(qsizetype n) {
    buffer_.resize(std::max(size_ + n, 2 * buffer_.size()));
    data_ = buffer_.data();
}

void JsonWriter::raw(QByteArrayView text) {
    std::memcpy(reserve(text.size()), text.data(), size_t(text.size()));
    size_ += text.size();
}

bool JsonWriter::string(QStringView text) {
    // Six bytes per UTF-16 unit covers the longest form, a \u00XX escape.
    char* const begin = reserve(6 * text.size() + 2);
    char* out = begin;
    *out++ = '"';
    // The runs between escapes go through Qt's UTF-8 encoder. No escaped character is a
    // surrogate, so a run never splits a surrogate pair, and a lone surrogate anywhere
    // leaves the encoder in error.
    qsizetype runStart = 0;
    for (qsizetype i = nextEscape(text, 0); i < text.size(); i = nextEscape(text, runStart)) {
        out = utf8_.appendToBuffer(out, text.sliced(runStart, i - runStart));
        out = putEscape(out, text[i].unicode());
        runStart = i + 1;
    }
    out = utf8_.appendToBuffer(out, text.sliced(runStart));
    *out++ = '"';
    size_ += out - begin;
    return !utf8_.hasError();
}

void JsonWriter::uuid(const QUuid& uuid) {
    char* const begin = reserve(38);
    char* out = begin;
    *out++ = '"';
    out = putHex(out, uuid.data1, 8);
    *out++ = '-';
    out = putHex(out, uuid.data2, 4);
    *out++ = '-';
    out = putHex(out, uuid.data3, 4);
    *out++ = '-';
    out = putHex(out, uuid.data4[0], 2);
    out = putHex(out, uuid.data4[1], 2);
    *out++ = '-';
    for (int i = 2; i < 8; ++i)
        out = putHex(out, uuid.data4[i], 2);
    *out++ = '"';
    size_ += out - begin;
}

QByteArray JsonWriter::take() {
    buffer_.resize(size_);
    size_ = 0;
    data_ = nullptr;
    return std::exchange(buffer_, QByteArray());
}

} // namespace deskmark
