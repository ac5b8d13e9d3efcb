#pragma once

#include "core/overlay/AccessibilityTree.h"

namespace deskmark {

// The accessibility tree as Deskmark sees it on Linux. No Linux desktop lets another
// program read or draw over its desktop overview, so no program's tree is offered:
// every application element is null and the overview probe always finds the overview
// closed. The application therefore never starts OverviewPoller's detection on Linux
// (see OverviewPoller::start); the overview logic still runs on the fake tree in tests.
class LinuxAccessibilityTree : public AccessibilityTree {
public:
    AXElement applicationElement(const QString& bundleID) const override;
};

} // namespace deskmark
