#pragma once

#include "core/overlay/ScreenProvider.h"

class QScreen;

namespace deskmark {

// The screens Qt knows, by QScreen::name(), geometry and available geometry; the main
// screen is Qt's primary.
class QtScreenProvider : public ScreenProvider {
public:
    QList<ScreenInfo> screens() const override;
    std::optional<ScreenInfo> mainScreen() const override;

    static ScreenInfo info(const QScreen& screen);
};

} // namespace deskmark
