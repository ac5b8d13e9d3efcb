#pragma once

// A temporary folder and whole-file helpers shared by the tests of the JSON-backed stores.

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace deskmark::testfiles {

// A fresh, empty folder for each test function: the test class calls reset() from init().
class TempFolder {
public:
    void reset() {
        dir_ = std::make_unique<QTemporaryDir>();
        QVERIFY(dir_->isValid());
    }
    QString path() const { return dir_->path(); }
    QString path(const QString& name) const { return dir_->filePath(name); }

private:
    std::unique_ptr<QTemporaryDir> dir_;
};

inline void writeFile(const QString& path, const QByteArray& data) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(data);
}

// The file's bytes, or nothing when it cannot be read.
inline QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// JSON written with single quotes, for legibility.
inline QByteArray json(const char* text) {
    return QByteArray(text).replace('\'', '"');
}

inline QJsonObject jsonObject(const QByteArray& text) {
    return QJsonDocument::fromJson(text).object();
}

} // namespace deskmark::testfiles
