#pragma once

#include <QJsonValue>
#include <QString>

namespace deskmark {

// The user-defaults domain of the application: typed values under string keys.
// value() gives an undefined QJsonValue for an absent key. Implementations persist
// every change at once; SettingsStore reads them only at start.
class Defaults {
public:
    virtual ~Defaults() = default;
    virtual QJsonValue value(const QString& key) const = 0;
    virtual void setValue(const QString& key, const QJsonValue& value) = 0;
    virtual void remove(const QString& key) = 0;
};

} // namespace deskmark
