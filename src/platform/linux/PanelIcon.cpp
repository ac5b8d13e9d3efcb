#include "platform/linux/PanelIcon.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>

#include <cmath>

namespace deskmark {

QImage PanelIcon::tinted(const QIcon& icon, const QSize& size, const QColor& color) {
    if (icon.isNull() || size.isEmpty())
        return {};
    const QImage shape = icon.pixmap(size, 1.0).toImage();
    if (shape.isNull())
        return {};
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.drawImage(
        QPoint((size.width() - shape.width()) / 2, (size.height() - shape.height()) / 2), shape);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

QColor PanelIcon::foregroundOn(const QColor& background) {
    const auto linear = [](qreal channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    const QColor rgb = background.toRgb();
    const qreal luminance =
        0.2126 * linear(rgb.redF()) + 0.7152 * linear(rgb.greenF()) + 0.0722 * linear(rgb.blueF());
    // 0.18 is where black and white text have the same contrast ratio.
    return luminance < 0.18 ? QColor(0xf6, 0xf5, 0xf4) : QColor(0x24, 0x1f, 0x31);
}

} // namespace deskmark
