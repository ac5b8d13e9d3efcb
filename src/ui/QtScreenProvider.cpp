#include "ui/QtScreenProvider.h"

#include <QGuiApplication>
#include <QScreen>

namespace deskmark {

ScreenInfo QtScreenProvider::info(const QScreen& screen) {
    return ScreenInfo{screen.name(), QRectF(screen.geometry()), QRectF(screen.availableGeometry())};
}

QList<ScreenInfo> QtScreenProvider::screens() const {
    QList<ScreenInfo> result;
    for (const QScreen* screen : QGuiApplication::screens())
        result << info(*screen);
    return result;
}

std::optional<ScreenInfo> QtScreenProvider::mainScreen() const {
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        return info(*screen);
    return std::nullopt;
}

} // namespace deskmark
