#include "platform/fake/FakeAccessibilityElement.h"

namespace deskmark {

std::shared_ptr<FakeAccessibilityElement>
FakeAccessibilityElement::make(const QString& identifier, const QString& role,
                               std::optional<QRectF> frame) {
    auto element = std::make_shared<FakeAccessibilityElement>();
    if (!identifier.isEmpty())
        element->setAttribute(QStringLiteral("AXIdentifier"), identifier);
    if (!role.isEmpty())
        element->setAttribute(QStringLiteral("AXRole"), role);
    element->setFrame(frame);
    return element;
}

std::optional<QString> FakeAccessibilityElement::stringAttribute(const QString& attribute) const {
    const auto it = attributes_.constFind(attribute);
    if (it == attributes_.constEnd())
        return std::nullopt;
    return *it;
}

bool FakeAccessibilityElement::press() {
    ++pressCount_;
    if (pressAction_)
        pressAction_();
    return true;
}

void FakeAccessibilityElement::setAttribute(const QString& attribute, const QString& value) {
    attributes_.insert(attribute, value);
}

} // namespace deskmark
