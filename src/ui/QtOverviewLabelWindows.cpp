#include "ui/QtOverviewLabelWindows.h"

namespace deskmark {

void QtOverviewLabelWindows::show(const QList<OverviewLabelScreen>& screens,
                                  const OverviewLabelStyle& style, bool fade) {
    windows_.clear(); // down at once, fades in progress included
    for (const OverviewLabelScreen& screen : screens) {
        auto window = std::make_unique<OverviewLabelWindow>(screen, style);
        window->setWindowOpacity(fade ? 0.0 : 1.0);
        window->show();
        windows_.push_back(std::move(window));
    }
    if (fade) {
        for (const auto& window : windows_)
            window->fadeIn();
    }
}

void QtOverviewLabelWindows::hide() {
    for (const auto& window : windows_)
        window->fadeOut();
}

} // namespace deskmark
