#include "platform/linux/LinuxAccessibilityTree.h"

namespace deskmark {

AXElement LinuxAccessibilityTree::applicationElement(const QString& bundleID) const {
    Q_UNUSED(bundleID)
    return nullptr;
}

} // namespace deskmark
