#pragma once

#include "core/overlay/AccessibilityTree.h"

#include <QHash>

namespace deskmark {

// Running programs and their accessibility trees, set up by hand.
class FakeAccessibilityTree : public AccessibilityTree {
public:
    AXElement applicationElement(const QString& bundleID) const override {
        return applications_.value(bundleID);
    }

    void setApplication(const QString& bundleID, AXElement root) {
        applications_.insert(bundleID, std::move(root));
    }
    void quitApplication(const QString& bundleID) { applications_.remove(bundleID); }

private:
    QHash<QString, AXElement> applications_;
};

} // namespace deskmark
