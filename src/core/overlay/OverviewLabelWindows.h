#pragma once

#include "core/overlay/OverviewLabelScreen.h"
#include "core/overlay/OverviewLabelStyle.h"

#include <QList>

namespace deskmark {

// The click-through windows that carry the overview labels, one per screen with labels.
class OverviewLabelWindows {
public:
    virtual ~OverviewLabelWindows() = default;

    // Takes every current window down at once, then opens one window per entry, covering
    // its screen above everything, and draws its boxes. With fade the windows start
    // transparent and fade in over 0.12 s; otherwise they appear opaque at once.
    virtual void show(const QList<OverviewLabelScreen>& screens, const OverviewLabelStyle& style,
                      bool fade) = 0;
    // Fades every window out over 0.12 s and then closes it.
    virtual void hide() = 0;
};

} // namespace deskmark
