#include "core/model/AppFolders.h"

#include <QDir>
#include <QStandardPaths>

namespace deskmark::AppFolders {

namespace {
QString appFolderUnder(QStandardPaths::StandardLocation location, const QString& name) {
    return QStandardPaths::writableLocation(location) + QLatin1Char('/') + name;
}
} // namespace

QString dataFolder() {
    return appFolderUnder(QStandardPaths::GenericDataLocation, QStringLiteral("Deskmark"));
}

QString configFolder() {
    return appFolderUnder(QStandardPaths::GenericConfigLocation, QStringLiteral("Deskmark"));
}

QString autostartFolder() {
    return appFolderUnder(QStandardPaths::GenericConfigLocation, QStringLiteral("autostart"));
}

void ensureExists(const QString& folder) { QDir().mkpath(folder); }

} // namespace deskmark::AppFolders
