#pragma once

#include <QList>
#include <QRectF>
#include <QString>

#include <memory>
#include <optional>

namespace deskmark {

class AccessibilityElement;

// An element of another program's accessibility tree, held for as long as someone keeps
// the handle (so a thumbnail found now can be pressed later).
using AXElement = std::shared_ptr<AccessibilityElement>;

// One node of an accessibility tree. Every query asks the owning program again; a query
// that fails for any reason (permission missing, program gone, attribute absent or of
// another type) answers "none" or an empty list, never an error.
class AccessibilityElement {
public:
    virtual ~AccessibilityElement() = default;

    // A string attribute such as "AXIdentifier", "AXRole" or "AXTitle"; none when the
    // attribute is absent or does not hold a string.
    virtual std::optional<QString> stringAttribute(const QString& attribute) const = 0;
    // The element's "AXChildren"; empty when it has none or they cannot be read.
    virtual QList<AXElement> children() const = 0;
    // "AXPosition" and "AXSize" together, in global coordinates with the origin at the
    // top-left of the primary screen and y growing downwards; none unless both are read.
    virtual std::optional<QRectF> frame() const = 0;
    // Performs the element's press action; false when the program refuses it.
    virtual bool press() = 0;
};

} // namespace deskmark
