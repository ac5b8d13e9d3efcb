#pragma once

#include "core/model/Defaults.h"
#include "core/model/StoreFile.h"

#include <QJsonObject>

#include <optional>

namespace deskmark {

// The settings on Linux: one JSON object in settings.json, read once at start and
// written whole and atomically after every change. An undecodable file is set aside
// as settings.json.broken before it is first replaced.
class SettingsFile : public Defaults {
public:
    explicit SettingsFile(const QString& path);

    // One value as the file holds it now, undefined when the file or the key is missing
    // or unusable. Logs nothing: for the choice made before the settings are opened (the
    // language), so that a damaged file is reported once, by the SettingsFile itself.
    static QJsonValue peek(const QString& path, const QString& key);

    QJsonValue value(const QString& key) const override { return values_.value(key); }
    void setValue(const QString& key, const QJsonValue& value) override;
    void remove(const QString& key) override;

private:
    // The settings object of a file's text; nothing when the text is not one.
    static std::optional<QJsonObject> decode(const QByteArray& data);
    void write();

    StoreFile file_;
    QJsonObject values_;
};

} // namespace deskmark
