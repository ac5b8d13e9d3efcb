#pragma once

#include "core/model/Defaults.h"

#include <QJsonObject>

namespace deskmark {

// Defaults kept in memory, for tests and the headless demo.
class MemoryDefaults : public Defaults {
public:
    MemoryDefaults() = default;
    explicit MemoryDefaults(QJsonObject values) : values_(std::move(values)) {}

    QJsonValue value(const QString& key) const override { return values_.value(key); }
    void setValue(const QString& key, const QJsonValue& value) override { values_[key] = value; }
    void remove(const QString& key) override { values_.remove(key); }

    const QJsonObject& values() const { return values_; }

private:
    QJsonObject values_;
};

} // namespace deskmark
