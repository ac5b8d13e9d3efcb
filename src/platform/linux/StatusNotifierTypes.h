#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QString>

class QImage;

// The structures of the org.kde.StatusNotifierItem interface, with their D-Bus marshalling.

namespace deskmark {

// One image: width, height and the pixels as ARGB32 in network byte order: (iiay).
struct DBusImage {
    int width = 0;
    int height = 0;
    QByteArray pixels;
};
using DBusImageList = QList<DBusImage>;

// The tool tip: icon name, icon images, title and description: (sa(iiay)ss).
struct DBusToolTip {
    QString iconName;
    DBusImageList images;
    QString title;
    QString description;
};

// Makes the types above known to QtDBus; safe to call more than once.
void registerStatusNotifierTypes();

// The image as the item's pixmaps travel: ARGB32, not premultiplied, in network byte order.
DBusImage dbusImage(const QImage& image);

QDBusArgument& operator<<(QDBusArgument& argument, const DBusImage& image);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusImage& image);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusToolTip& toolTip);

} // namespace deskmark

Q_DECLARE_METATYPE(deskmark::DBusImage)
Q_DECLARE_METATYPE(deskmark::DBusToolTip)
