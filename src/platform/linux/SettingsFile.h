#pragma once

#include "core/model/Defaults.h"
#include "core/model/StoreFile.h"

#include <QJsonObject>

namespace deskmark {

// The settings on Linux: one JSON object in settings.json, read once at start and
// written whole and atomically after every change. An undecodable file is set aside
// as settings.json.broken before it is first replaced.
class SettingsFile : public Defaults {
public:
    explicit SettingsFile(const QString& path);

    QJsonValue value(const QString& key) const override { return values_.value(key); }
    void setValue(const QString& key, const QJsonValue& value) override;
    void remove(const QString& key) override;

private:
    void write();

    StoreFile file_;
    QJsonObject values_;
};

} // namespace deskmark
