#pragma once

#include <QIcon>
#include <QString>

namespace deskmark {

// Icons for menus and pickers (shown at 16 × 16).
class MenuIcons {
public:
    // An application's icon from its desktop entry's Icon value: a theme icon name, or an
    // absolute image file. A null icon when there is none.
    static QIcon application(const QString& iconName);
    // A file's or folder's icon by its MIME type, from the icon theme.
    static QIcon file(const QString& path);
};

} // namespace deskmark
