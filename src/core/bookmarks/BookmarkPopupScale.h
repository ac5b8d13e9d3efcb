#pragma once

#include <optional>

namespace deskmark {

// The bookmark popup's size steps: 1.0, 1.2 and 1.5.
namespace BookmarkPopupScale {

// The next step above or below `current`, or nothing beyond either end. A value within
// 0.001 of a step stands on it; one between two steps moves to the nearer of them in the
// direction asked (1.3 steps up to 1.5 and down to 1.2).
std::optional<double> stepped(double current, bool up);

} // namespace BookmarkPopupScale

} // namespace deskmark
