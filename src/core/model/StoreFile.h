#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

namespace deskmark {

// One JSON file owned by a store: read whole, written whole and atomically.
//
// A store that finds its file undecodable starts empty and calls markBroken(). Before
// the first write that would replace that file, the damaged file is copied aside to
// "<name>.broken" (replacing an older copy) and one line is logged, so a mistake made
// while editing the file by hand never costs the user the data in it. If that copy
// cannot be made, the write is refused and the damaged file stays where it is.
class StoreFile {
public:
    enum class ReadStatus { Missing, Unreadable, Read };
    struct ReadResult {
        ReadStatus status = ReadStatus::Missing;
        QByteArray data;
    };

    explicit StoreFile(QString path);

    const QString& path() const { return path_; }
    QString fileName() const;
    bool exists() const;

    ReadResult read() const;

    void markBroken() { brokenPending_ = true; }
    bool isBrokenPending() const { return brokenPending_; }

    // Replaces the file with data. Returns the error's description on failure, in
    // which case the previous file is untouched.
    std::optional<QString> write(const QByteArray& data);

    // write() for a store: a failure is logged and handed to the failure handler, the
    // first time only in this run, since a cause like a folder in the file's place
    // stays and every later save would fail alike.
    void save(const QByteArray& data);

    // Who tells the user that a file cannot be saved (once per file and run): the
    // file's path and the error's description.
    using FailureHandler = std::function<void(const QString& path, const QString& error)>;
    static void setFailureHandler(FailureHandler handler);

    // Removes the temporary copies a write cut short left beside the file at `path`
    // ("<name>.XXXXXX"), logging each. Only for a process that knows no other one is
    // writing there, the holder of the instance lock.
    static void removeStaleTemporaries(const QString& path);

private:
    std::optional<QString> setBrokenFileAside();

    QString path_;
    bool brokenPending_ = false;
    bool failureReported_ = false;
};

} // namespace deskmark
