#pragma once

#include "core/overlay/ScreenProvider.h"

#include <QRect>

#include <functional>
#include <optional>

class QScreen;

namespace deskmark {

// The screens Qt knows, by QScreen::name(), geometry and available geometry; the main
// screen is Qt's primary.
class QtScreenProvider : public ScreenProvider {
public:
    // Where the platform knows better than Qt which part of a monitor panels leave free
    // (Qt on X11 applies the work area to the primary screen only): given the monitor's
    // frame in device pixels, that part in device pixels; none leaves it to Qt.
    using AvailableArea = std::function<std::optional<QRect>(const QRect& nativeFrame)>;

    explicit QtScreenProvider(AvailableArea availableArea = {});

    QList<ScreenInfo> screens() const override;
    std::optional<ScreenInfo> mainScreen() const override;

    // The screen as Qt alone describes it.
    static ScreenInfo info(const QScreen& screen);
    // The screen's frame in device pixels: Qt keeps a screen's position unscaled and
    // scales its size only.
    static QRect nativeFrame(const QScreen& screen);

private:
    // The screen with the platform's visible frame where it has one.
    ScreenInfo describe(const QScreen& screen) const;

    AvailableArea availableArea_;
};

} // namespace deskmark
