#pragma once

namespace deskmark {

// Opens the desktop overview (Mission Control) the way the user would.
class OverviewOpener {
public:
    virtual ~OverviewOpener() = default;
    virtual void openOverview() = 0;
};

} // namespace deskmark
