#include "core/model/StoreFile.h"

#include "core/app/SystemLog.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace deskmark {

StoreFile::StoreFile(QString path) : path_(std::move(path)) {}

QString StoreFile::fileName() const { return QFileInfo(path_).fileName(); }

bool StoreFile::exists() const { return QFileInfo::exists(path_); }

StoreFile::ReadResult StoreFile::read() const {
    QFile file(path_);
    if (!file.exists())
        return {ReadStatus::Missing, {}};
    if (QFileInfo(path_).isDir() || !file.open(QIODevice::ReadOnly))
        return {ReadStatus::Unreadable, {}};
    QByteArray data = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return {ReadStatus::Unreadable, {}};
    return {ReadStatus::Read, std::move(data)};
}

std::optional<QString> StoreFile::setBrokenFileAside() {
    // A file removed meanwhile is not overwritten: there is nothing to keep, and an
    // older copy stays as it is.
    QFile damaged(path_);
    if (!damaged.exists())
        return std::nullopt;
    const QString brokenPath = path_ + QStringLiteral(".broken");
    if (QFileInfo::exists(brokenPath) && !QFile::remove(brokenPath))
        return QStringLiteral("cannot replace %1").arg(brokenPath);
    if (!damaged.copy(brokenPath))
        return damaged.errorString();
    systemLog(QStringLiteral("Deskmark: 読み込めなかった %1 を %1.broken に退避").arg(fileName()));
    return std::nullopt;
}

std::optional<QString> StoreFile::write(const QByteArray& data) {
    if (brokenPending_) {
        if (auto error = setBrokenFileAside())
            return QStringLiteral("%1.broken を作成できないため上書きを中止: %2")
                .arg(fileName(), *error);
        brokenPending_ = false;
    }
    QSaveFile file(path_);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    if (file.write(data) != data.size()) {
        const QString error = file.errorString();
        file.cancelWriting();
        return error;
    }
    if (!file.commit())
        return file.errorString();
    return std::nullopt;
}

} // namespace deskmark
