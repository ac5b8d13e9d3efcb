#pragma once

// Whole-file helpers shared by the tests of the JSON-backed stores.

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace deskmark::testfiles {

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

inline QJsonObject jsonObject(const char* text) {
    return QJsonDocument::fromJson(text).object();
}

} // namespace deskmark::testfiles
