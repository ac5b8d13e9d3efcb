#include "core/bookmarks/BookmarkPopupScale.h"

#include <array>
#include <cmath>

namespace deskmark::BookmarkPopupScale {

namespace {
constexpr std::array kSteps{1.0, 1.2, 1.5};
constexpr double kTolerance = 0.001;

// The index of the step `value` stands on.
int currentStep(double value) {
    for (int i = 0; i < int(kSteps.size()); ++i) {
        if (std::abs(kSteps[size_t(i)] - value) < kTolerance)
            return i;
    }
    int below = 0;
    for (int i = 0; i < int(kSteps.size()); ++i) {
        if (kSteps[size_t(i)] < value)
            below = i;
    }
    return below;
}
} // namespace

std::optional<double> stepped(double current, bool up) {
    const int next = currentStep(current) + (up ? 1 : -1);
    if (next < 0 || next >= int(kSteps.size()))
        return std::nullopt;
    return kSteps[size_t(next)];
}

} // namespace deskmark::BookmarkPopupScale
