#include "core/model/HomePath.h"

#include <QDir>

namespace deskmark {

QString expandTilde(const QString& path) {
    if (path == QLatin1String("~"))
        return QDir::homePath();
    if (path.startsWith(QLatin1String("~/")))
        return QDir::homePath() + path.mid(1);
    return path;
}

QString abbreviateWithTilde(const QString& path) {
    const QString home = QDir::homePath();
    if (home.isEmpty() || home == QLatin1String("/"))
        return path;
    if (path == home)
        return QStringLiteral("~");
    if (path.startsWith(home + u'/'))
        return u'~' + path.mid(home.size());
    return path;
}

} // namespace deskmark
