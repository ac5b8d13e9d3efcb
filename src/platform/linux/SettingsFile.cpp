#include "platform/linux/SettingsFile.h"

#include "core/app/SystemLog.h"
#include "core/model/AppFolders.h"
#include "core/model/JsonReader.h"

#include <QFileInfo>
#include <QJsonDocument>

namespace deskmark {

SettingsFile::SettingsFile(const QString& path) : file_(path) {
    const StoreFile::ReadResult result = file_.read();
    if (result.status == StoreFile::ReadStatus::Missing)
        return;
    if (result.status == StoreFile::ReadStatus::Unreadable) {
        systemLog(QStringLiteral("Deskmark: settings.json の読み込みに失敗"));
        // Its content is unknown, so it must not be replaced unseen either.
        file_.markBroken();
        return;
    }
    auto values = decode(result.data);
    if (!values) {
        systemLog(QStringLiteral("Deskmark: settings.json のデコードに失敗（既定値で開始）"));
        file_.markBroken();
        return;
    }
    values_ = std::move(*values);
}

QJsonValue SettingsFile::peek(const QString& path, const QString& key) {
    const StoreFile::ReadResult result = StoreFile(path).read();
    if (result.status != StoreFile::ReadStatus::Read)
        return QJsonValue(QJsonValue::Undefined);
    return decode(result.data).value_or(QJsonObject()).value(key);
}

std::optional<QJsonObject> SettingsFile::decode(const QByteArray& data) {
    const std::optional<QJsonDocument> document = JsonReader::strictDocument(data);
    if (!document || !document->isObject())
        return std::nullopt;
    return document->object();
}

void SettingsFile::setValue(const QString& key, const QJsonValue& value) {
    if (values_.value(key) == value && values_.contains(key))
        return;
    values_[key] = value;
    write();
}

void SettingsFile::remove(const QString& key) {
    if (!values_.contains(key))
        return;
    values_.remove(key);
    write();
}

void SettingsFile::write() {
    AppFolders::ensureExists(QFileInfo(file_.path()).absolutePath());
    const QByteArray data = QJsonDocument(values_).toJson(QJsonDocument::Indented);
    file_.save(data);
}

} // namespace deskmark
