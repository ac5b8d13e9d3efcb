#include "core/model/RgbColor.h"

#include <cmath>

namespace deskmark {

namespace {

int hexDigitValue(QChar c) {
    const char16_t u = c.unicode();
    if (u >= u'0' && u <= u'9')
        return u - u'0';
    if (u >= u'a' && u <= u'f')
        return u - u'a' + 10;
    if (u >= u'A' && u <= u'F')
        return u - u'A' + 10;
    return -1;
}

// One component as a byte: 255 steps, rounded half away from zero, clamped. A NaN
// component fails every comparison and ends up as 0.
int toByte(double component) {
    const double scaled = std::round(component * 255.0);
    if (!(scaled > 0.0))
        return 0;
    if (scaled > 255.0)
        return 255;
    return int(scaled);
}

} // namespace

std::optional<RgbColor> RgbColor::fromDeskmarkHex(const QString& text) {
    const QStringView digits =
        text.startsWith(QLatin1Char('#')) ? QStringView(text).mid(1) : QStringView(text);
    if (digits.size() != 6)
        return std::nullopt;
    int value = 0;
    for (const QChar c : digits) {
        const int digit = hexDigitValue(c);
        if (digit < 0)
            return std::nullopt;
        value = value * 16 + digit;
    }
    return RgbColor{((value >> 16) & 0xFF) / 255.0, ((value >> 8) & 0xFF) / 255.0,
                    (value & 0xFF) / 255.0};
}

QString RgbColor::deskmarkHex() const {
    return QStringLiteral("#%1%2%3")
        .arg(toByte(red), 2, 16, QLatin1Char('0'))
        .arg(toByte(green), 2, 16, QLatin1Char('0'))
        .arg(toByte(blue), 2, 16, QLatin1Char('0'))
        .toUpper();
}

} // namespace deskmark
