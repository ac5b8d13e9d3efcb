#include "core/model/ColorPreset.h"

namespace deskmark {

std::optional<ColorPreset> ColorPreset::fromJson(const QJsonValue& value) {
    if (!value.isObject())
        return std::nullopt;
    const QJsonObject object = value.toObject();
    const QJsonValue id = object.value(QLatin1String("id"));
    const QJsonValue name = object.value(QLatin1String("name"));
    const QJsonValue bgHex = object.value(QLatin1String("bgHex"));
    const QJsonValue textHex = object.value(QLatin1String("textHex"));
    if (!id.isString() || !name.isString() || !bgHex.isString() || !textHex.isString())
        return std::nullopt;
    return ColorPreset{id.toString(), name.toString(), bgHex.toString(), textHex.toString()};
}

QJsonObject ColorPreset::toJson() const {
    return QJsonObject{{QLatin1String("id"), id},
                       {QLatin1String("name"), name},
                       {QLatin1String("bgHex"), bgHex},
                       {QLatin1String("textHex"), textHex}};
}

} // namespace deskmark
