#pragma once

#include "core/overlay/OverviewLabelWindows.h"
#include "ui/OverviewLabelWindow.h"

#include <memory>
#include <vector>

namespace deskmark {

// The overview label windows on screen, one OverviewLabelWindow per screen with labels.
// Hidden windows stay until the next show() replaces them.
class QtOverviewLabelWindows : public OverviewLabelWindows {
public:
    void show(const QList<OverviewLabelScreen>& screens, const OverviewLabelStyle& style,
              bool fade) override;
    void hide() override;

    // The windows of the last show(), for inspection.
    const std::vector<std::unique_ptr<OverviewLabelWindow>>& windows() const { return windows_; }

private:
    std::vector<std::unique_ptr<OverviewLabelWindow>> windows_;
};

} // namespace deskmark
