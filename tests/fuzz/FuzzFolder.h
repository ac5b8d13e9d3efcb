#pragma once

// What the file fuzzers share: a quiet process (a damaged file is logged, and every
// input would print a line) and one folder whose store files each input replaces.

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtGlobal>

#include <cstdio>
#include <cstdlib>

namespace deskmark::fuzz {

// Stops the run with the input saved when a file that was accepted changed on its way
// back through a save.
inline void require(bool condition, const char* what) {
    if (condition)
        return;
    std::fprintf(stderr, "accepted input not kept: %s\n", what);
    std::abort();
}

class FuzzFolder {
public:
    static FuzzFolder& shared() {
        static FuzzFolder folder;
        return folder;
    }

    QString path() const { return dir_.path(); }
    QString file(const char* name) const { return dir_.filePath(QLatin1String(name)); }

    // Empties the folder and puts data there as `name`.
    void reset(const char* name, const uint8_t* data, size_t size) {
        QDir folder(dir_.path());
        for (const QString& entry : folder.entryList(QDir::Files | QDir::Hidden))
            folder.remove(entry);
        QFile input(file(name));
        if (!input.open(QIODevice::WriteOnly) ||
            input.write(reinterpret_cast<const char*>(data), qint64(size)) != qint64(size))
            std::abort();
    }

private:
    // In memory where possible: every save syncs its file to disk, which on a disk
    // would take most of the time.
    FuzzFolder()
        : dir_(QDir(QStringLiteral("/dev/shm")).exists()
                   ? QStringLiteral("/dev/shm/deskmark-fuzz-XXXXXX")
                   : QDir::tempPath() + QStringLiteral("/deskmark-fuzz-XXXXXX")) {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        if (!dir_.isValid())
            std::abort();
    }
    QTemporaryDir dir_;
};

} // namespace deskmark::fuzz
