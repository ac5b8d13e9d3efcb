#include "core/model/StoreFile.h"

#include "core/app/SystemLog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

namespace deskmark {

namespace {
StoreFile::FailureHandler& failureHandler() {
    static StoreFile::FailureHandler handler;
    return handler;
}
} // namespace

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

void StoreFile::save(const QByteArray& data) {
    const std::optional<QString> error = write(data);
    if (!error || failureReported_)
        return;
    failureReported_ = true;
    systemLog(QStringLiteral("Deskmark: %1 の保存に失敗: %2").arg(fileName(), *error));
    if (failureHandler())
        failureHandler()(path_, *error);
}

void StoreFile::setFailureHandler(FailureHandler handler) {
    failureHandler() = std::move(handler);
}

void StoreFile::removeStaleTemporaries(const QString& path) {
    // QSaveFile writes "<name>.XXXXXX" (letters and digits) and renames it over the
    // file; ".broken" has the same shape but is the user's copy.
    const QFileInfo file(path);
    const QRegularExpression temporary(
        QStringLiteral("^%1\\.[A-Za-z0-9]{6}$").arg(QRegularExpression::escape(file.fileName())));
    const QDir folder = file.absoluteDir();
    const QStringList names = folder.entryList({file.fileName() + QStringLiteral(".*")},
                                               QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& name : names) {
        if (!temporary.match(name).hasMatch() || name.endsWith(QStringLiteral(".broken")))
            continue;
        const QString line =
            QFile::remove(folder.filePath(name))
                ? QStringLiteral("Deskmark: 中断された保存の一時ファイル %1 を削除")
                : QStringLiteral("Deskmark: 中断された保存の一時ファイル %1 を削除できません");
        systemLog(line.arg(name));
    }
}

} // namespace deskmark
