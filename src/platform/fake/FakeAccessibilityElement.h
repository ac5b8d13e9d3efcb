#pragma once

#include "core/overlay/AccessibilityElement.h"

#include <QHash>

#include <functional>

namespace deskmark {

// An accessibility element built by hand. Tests assemble trees from these and change
// them between polls (move a frame, drop a child) to script what the overview does.
class FakeAccessibilityElement : public AccessibilityElement {
public:
    // An element with the given "AXIdentifier" and "AXRole" (each left out when empty)
    // and optionally a frame.
    static std::shared_ptr<FakeAccessibilityElement> make(const QString& identifier = {},
                                                          const QString& role = {},
                                                          std::optional<QRectF> frame = {});

    std::optional<QString> stringAttribute(const QString& attribute) const override;
    QList<AXElement> children() const override { return children_; }
    std::optional<QRectF> frame() const override { return frame_; }
    bool press() override;

    void setAttribute(const QString& attribute, const QString& value);
    void setFrame(std::optional<QRectF> frame) { frame_ = frame; }
    void append(AXElement child) { children_ << std::move(child); }
    void removeChild(const AXElement& child) { children_.removeAll(child); }
    int pressCount() const { return pressCount_; }
    // What pressing does besides being counted (a thumbnail that switches Spaces).
    void setPressAction(std::function<void()> action) { pressAction_ = std::move(action); }

private:
    QHash<QString, QString> attributes_;
    QList<AXElement> children_;
    std::optional<QRectF> frame_;
    int pressCount_ = 0;
    std::function<void()> pressAction_;
};

} // namespace deskmark
