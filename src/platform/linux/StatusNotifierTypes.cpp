#include "platform/linux/StatusNotifierTypes.h"

#include <QDBusMetaType>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QtEndian>

namespace deskmark {

void registerStatusNotifierTypes() {
    static const bool registered = [] {
        qDBusRegisterMetaType<DBusImage>();
        qDBusRegisterMetaType<DBusImageList>();
        qDBusRegisterMetaType<DBusToolTip>();
        return true;
    }();
    Q_UNUSED(registered);
}

DBusImageList dbusImages(const QIcon& icon) {
    if (icon.isNull())
        return {};
    QList<QSize> sizes = icon.availableSizes();
    if (sizes.isEmpty())
        sizes = {QSize(16, 16), QSize(22, 22), QSize(24, 24), QSize(32, 32), QSize(48, 48)};

    DBusImageList images;
    for (const QSize& size : sizes) {
        const QImage image =
            icon.pixmap(size, 1.0).toImage().convertToFormat(QImage::Format_ARGB32);
        if (image.isNull())
            continue;
        DBusImage out{image.width(), image.height(), {}};
        out.pixels.resize(qsizetype(image.width()) * image.height() * 4);
        auto* target = reinterpret_cast<uchar*>(out.pixels.data());
        for (int y = 0; y < image.height(); ++y) {
            const auto* row = reinterpret_cast<const quint32*>(image.constScanLine(y));
            for (int x = 0; x < image.width(); ++x, target += 4)
                qToBigEndian(row[x], target);
        }
        images.append(out);
    }
    return images;
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
