#include "core/model/Bookmark.h"

#include <QDir>

namespace deskmark {

namespace {
QString expandTilde(const QString& path) {
    if (path == QLatin1String("~"))
        return QDir::homePath();
    if (path.startsWith(QLatin1String("~/")))
        return QDir::homePath() + path.mid(1);
    return path;
}
} // namespace

QString Bookmark::dedupeKey() const {
    if (kind == Kind::Url)
        return QStringLiteral("url:") + target;
    // A relative path is taken relative to the working folder, as a file URL made from it
    // would be; cleanPath then resolves "." and ".." and drops repeated or trailing slashes.
    const QString absolute = QDir::current().absoluteFilePath(expandTilde(target));
    return QStringLiteral("file:") + QDir::cleanPath(absolute);
}

} // namespace deskmark
