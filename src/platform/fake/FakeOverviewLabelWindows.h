#pragma once

#include "core/overlay/OverviewLabelWindows.h"

namespace deskmark {

// Records what the overview label windows were asked to do.
class FakeOverviewLabelWindows : public OverviewLabelWindows {
public:
    struct Shown {
        QList<OverviewLabelScreen> screens;
        OverviewLabelStyle style;
        bool fade = false;
    };

    void show(const QList<OverviewLabelScreen>& screens, const OverviewLabelStyle& style,
              bool fade) override {
        shows << Shown{screens, style, fade};
        visible = true;
    }
    void hide() override {
        ++hides;
        visible = false;
    }

    QList<Shown> shows;
    int hides = 0;
    // Shown and not hidden since.
    bool visible = false;
};

} // namespace deskmark
