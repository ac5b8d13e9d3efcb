#pragma once

#include <optional>

namespace deskmark {

// The bookmark popup's size steps: 1.0, 1.2 and 1.5.
namespace BookmarkPopupScale {

// The scale one step up or down from `current`, or nothing at either end. A value
// between the steps counts as the largest step below it (1.3 steps up to 1.5 and down
// to 1.2); one below every step counts as the first.
std::optional<double> stepped(double current, bool up);

} // namespace BookmarkPopupScale

} // namespace deskmark
