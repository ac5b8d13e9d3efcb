#pragma once

#include "core/overlay/ScreenProvider.h"

namespace deskmark {

// A fixed screen layout whose first screen is the main one.
class FakeScreenProvider : public ScreenProvider {
public:
    QList<ScreenInfo> screens() const override { return screens_; }
    std::optional<ScreenInfo> mainScreen() const override {
        if (screens_.isEmpty())
            return std::nullopt;
        return screens_.first();
    }

    void setScreens(QList<ScreenInfo> screens) { screens_ = std::move(screens); }

private:
    QList<ScreenInfo> screens_;
};

} // namespace deskmark
