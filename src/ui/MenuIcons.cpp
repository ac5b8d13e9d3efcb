#include "ui/MenuIcons.h"

#include <QFileInfo>
#include <QMimeDatabase>

namespace deskmark {

QIcon MenuIcons::application(const QString& iconName) {
    if (iconName.isEmpty())
        return {};
    if (QFileInfo(iconName).isAbsolute())
        return QIcon(iconName);
    return QIcon::fromTheme(iconName);
}

QIcon MenuIcons::file(const QString& path) {
    const QMimeType type = QMimeDatabase().mimeTypeForFile(path);
    return QIcon::fromTheme(type.iconName(), QIcon::fromTheme(type.genericIconName()));
}

} // namespace deskmark
