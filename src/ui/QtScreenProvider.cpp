#include "ui/QtScreenProvider.h"

#include <QGuiApplication>
#include <QScreen>

#include <cmath>

namespace deskmark {

QtScreenProvider::QtScreenProvider(AvailableArea availableArea)
    : availableArea_(std::move(availableArea)) {}

QRect QtScreenProvider::nativeFrame(const QScreen& screen) {
    const QRect frame = screen.geometry();
    const double ratio = screen.devicePixelRatio();
    return QRect(frame.topLeft(), QSize(int(std::lround(frame.width() * ratio)),
                                        int(std::lround(frame.height() * ratio))));
}

ScreenInfo QtScreenProvider::info(const QScreen& screen) {
    return ScreenInfo{screen.name(), QRectF(screen.geometry()), QRectF(screen.availableGeometry())};
}

ScreenInfo QtScreenProvider::describe(const QScreen& screen) const {
    ScreenInfo described = info(screen);
    const QRect native = nativeFrame(screen);
    if (const std::optional<QRect> area = availableArea_ ? availableArea_(native) : std::nullopt) {
        const double ratio = screen.devicePixelRatio();
        described.visibleFrame =
            QRectF(described.frame.topLeft() + QPointF(area->topLeft() - native.topLeft()) / ratio,
                   QSizeF(area->size()) / ratio);
    }
    return described;
}

QList<ScreenInfo> QtScreenProvider::screens() const {
    QList<ScreenInfo> result;
    for (const QScreen* screen : QGuiApplication::screens())
        result << describe(*screen);
    return result;
}

std::optional<ScreenInfo> QtScreenProvider::mainScreen() const {
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        return describe(*screen);
    return std::nullopt;
}

} // namespace deskmark
