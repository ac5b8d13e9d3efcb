#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QMap>
#include <QString>
#include <QStringList>

#include <cmath>
#include <optional>

namespace deskmark {

// JsonCodec<T>: how a setting of type T is kept in the settings object. decode() is
// strict: a value of any other JSON type, or a container with one such entry, gives
// none, so the caller falls back to the setting's default as a whole.
template <typename T> struct JsonCodec;

template <> struct JsonCodec<bool> {
    static QJsonValue encode(bool value) { return value; }
    static std::optional<bool> decode(const QJsonValue& json) {
        return json.isBool() ? std::optional(json.toBool()) : std::nullopt;
    }
};

// A number that is not finite is taken as a value of the wrong type.
template <> struct JsonCodec<double> {
    static QJsonValue encode(double value) { return value; }
    static std::optional<double> decode(const QJsonValue& json) {
        if (!json.isDouble() || !std::isfinite(json.toDouble()))
            return std::nullopt;
        return json.toDouble();
    }
};

template <> struct JsonCodec<QString> {
    static QJsonValue encode(const QString& value) { return value; }
    static std::optional<QString> decode(const QJsonValue& json) {
        return json.isString() ? std::optional(json.toString()) : std::nullopt;
    }
};

template <> struct JsonCodec<QStringList> {
    static QJsonValue encode(const QStringList& value) { return QJsonArray::fromStringList(value); }
    static std::optional<QStringList> decode(const QJsonValue& json) {
        if (!json.isArray())
            return std::nullopt;
        QStringList result;
        for (const QJsonValue& entry : json.toArray()) {
            if (!entry.isString())
                return std::nullopt;
            result << entry.toString();
        }
        return result;
    }
};

// Dictionaries are JSON objects.
template <typename T> struct JsonCodec<QMap<QString, T>> {
    static QJsonValue encode(const QMap<QString, T>& value) {
        QJsonObject object;
        for (auto it = value.begin(); it != value.end(); ++it)
            object.insert(it.key(), JsonCodec<T>::encode(it.value()));
        return object;
    }
    static std::optional<QMap<QString, T>> decode(const QJsonValue& json) {
        if (!json.isObject())
            return std::nullopt;
        const QJsonObject object = json.toObject();
        QMap<QString, T> result;
        for (auto it = object.begin(); it != object.end(); ++it) {
            std::optional<T> entry = JsonCodec<T>::decode(it.value());
            if (!entry)
                return std::nullopt;
            result.insert(it.key(), std::move(*entry));
        }
        return result;
    }
};

} // namespace deskmark
