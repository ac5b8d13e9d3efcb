#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <optional>

namespace deskmark {

// A named pair of colours that projects refer to by id. The colours are kept as the hex
// text of RgbColor::deskmarkHex, exactly as stored, so a malformed text survives a save.
struct ColorPreset {
    QString id; // "default" for the built-in preset, an upper-case UUID otherwise
    QString name;
    QString bgHex;
    QString textHex;

    // All four keys are required and must hold strings; other keys are ignored.
    static std::optional<ColorPreset> fromJson(const QJsonValue& value);
    QJsonObject toJson() const;

    friend bool operator==(const ColorPreset&, const ColorPreset&) = default;
};

} // namespace deskmark
