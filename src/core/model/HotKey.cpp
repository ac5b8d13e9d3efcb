#include "core/model/HotKey.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <limits>

namespace deskmark {

namespace {
std::optional<quint32> unsigned32(const QJsonValue& value) {
    if (!value.isDouble())
        return std::nullopt;
    const double number = value.toDouble();
    if (number < 0 || number > std::numeric_limits<quint32>::max() || number != std::floor(number))
        return std::nullopt;
    return static_cast<quint32>(number);
}
} // namespace

QByteArray HotKey::toJson() const {
    const QJsonObject record{{QStringLiteral("keyCode"), static_cast<double>(keyCode)},
                             {QStringLiteral("modifiers"), static_cast<double>(modifiers)}};
    return QJsonDocument(record).toJson(QJsonDocument::Compact);
}

std::optional<HotKey> HotKey::fromJson(const QByteArray& json) {
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject record = document.object();
    const auto keyCode = unsigned32(record.value(QLatin1String("keyCode")));
    const auto modifiers = unsigned32(record.value(QLatin1String("modifiers")));
    if (!keyCode || !modifiers)
        return std::nullopt;
    return HotKey{*keyCode, *modifiers};
}

} // namespace deskmark
