#pragma once

#include "core/spaces/CGSDisplay.h"

namespace deskmark {

// One display that a switch has to change, and the position of the wanted Space in that
// display's Space list.
struct SwitchTarget {
    CGSDisplay display;
    int index = 0;

    // The wanted Space's uuid; empty when the index is outside the display's Spaces.
    QString spaceUUID() const {
        return index >= 0 && index < display.spaces.size() ? display.spaces[index].uuid
                                                            : QString();
    }
};

} // namespace deskmark
