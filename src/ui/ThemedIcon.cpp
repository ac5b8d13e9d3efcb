#include "ui/ThemedIcon.h"

#include <QApplication>

namespace deskmark {

QIcon ThemedIcon::get(const char* name, QStyle::StandardPixmap fallback) {
    return QIcon::fromTheme(QString::fromLatin1(name), QApplication::style()->standardIcon(fallback));
}

} // namespace deskmark
