#include "platform/linux/StatusNotifierTypes.h"

#include <QDBusMetaType>
#include <QImage>
#include <QtEndian>

namespace deskmark {

void registerStatusNotifierTypes() {
    static const bool registered = [] {
        qDBusRegisterMetaType<DBusImage>();
        qDBusRegisterMetaType<DBusImageList>();
        qDBusRegisterMetaType<DBusToolTip>();
        // Known by the name the item's property is declared with, too.
        qRegisterMetaType<DBusImageList>("deskmark::DBusImageList");
        return true;
    }();
    Q_UNUSED(registered);
}

DBusImage dbusImage(const QImage& image) {
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    DBusImage out{argb.width(), argb.height(), {}};
    out.pixels.resize(qsizetype(argb.width()) * argb.height() * 4);
    auto* target = reinterpret_cast<uchar*>(out.pixels.data());
    for (int y = 0; y < argb.height(); ++y) {
        const auto* row = reinterpret_cast<const quint32*>(argb.constScanLine(y));
        for (int x = 0; x < argb.width(); ++x, target += 4)
            qToBigEndian(row[x], target);
    }
    return out;
}

QDBusArgument& operator<<(QDBusArgument& argument, const DBusImage& image) {
    argument.beginStructure();
    argument << image.width << image.height << image.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, DBusImage& image) {
    argument.beginStructure();
    argument >> image.width >> image.height >> image.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const DBusToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.images << toolTip.title << toolTip.description;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, DBusToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.images >> toolTip.title >> toolTip.description;
    argument.endStructure();
    return argument;
}

} // namespace deskmark
