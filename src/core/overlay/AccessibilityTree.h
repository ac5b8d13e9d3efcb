#pragma once

#include "core/overlay/AccessibilityElement.h"

namespace deskmark {

// The way into other programs' accessibility trees: the application element of a running
// program, named by its bundle (or desktop-file) identifier.
class AccessibilityTree {
public:
    virtual ~AccessibilityTree() = default;

    // The root element of the first running program with that identifier; null when no
    // such program runs or its tree cannot be reached.
    virtual AXElement applicationElement(const QString& bundleID) const = 0;
};

} // namespace deskmark
