#include "core/model/Bookmark.h"

#include "core/model/HomePath.h"

#include <QDir>

namespace deskmark {

QString Bookmark::dedupeKey() const {
    if (kind == Kind::Url)
        return QStringLiteral("url:") + target;
    // A relative path is taken relative to the working folder, as a file URL made from it
    // would be; cleanPath then resolves "." and ".." and drops repeated or trailing slashes.
    QString path = QDir::cleanPath(QDir::current().absoluteFilePath(expandTilde(target)));
    // It keeps a ".." that climbs above the root, where a standardised URL drops it, and
    // the root's parent is the root itself.
    while (path.startsWith(QLatin1String("/..")) && (path.size() == 3 || path[3] == u'/'))
        path = path.size() == 3 ? QStringLiteral("/") : path.mid(3);
    return QStringLiteral("file:") + path;
}

} // namespace deskmark
