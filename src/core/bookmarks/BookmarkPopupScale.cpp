#include "core/bookmarks/BookmarkPopupScale.h"

#include <array>

namespace deskmark::BookmarkPopupScale {

namespace {
constexpr std::array kSteps{1.0, 1.2, 1.5};
// A value this close to a step stands on it.
constexpr double kTolerance = 0.001;
} // namespace

std::optional<double> stepped(double current, bool up) {
    if (up) {
        for (const double step : kSteps) {
            if (step > current + kTolerance)
                return step;
        }
        return std::nullopt;
    }
    for (auto step = kSteps.rbegin(); step != kSteps.rend(); ++step) {
        if (*step < current - kTolerance)
            return *step;
    }
    return std::nullopt;
}

} // namespace deskmark::BookmarkPopupScale
