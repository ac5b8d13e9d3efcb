#pragma once

#include "platform/fake/FakeAccessibilityElement.h"
#include "platform/fake/FakeAccessibilityTree.h"

#include <QRectF>

namespace deskmark {

// A Dock-like accessibility tree that tests open and close like the desktop overview:
// Dock → "mc" → "mc.display" → two nested groups → "mc.spaces.list" → AXButton per Space.
class MissionControlTree {
public:
    using Element = std::shared_ptr<FakeAccessibilityElement>;

    MissionControlTree() {
        dock->append(
            FakeAccessibilityElement::make({}, QStringLiteral("AXList"))); // the Dock's icons
        tree.setApplication(QStringLiteral("com.apple.dock"), dock);
    }

    void open() {
        if (overview)
            return;
        overview = FakeAccessibilityElement::make(QStringLiteral("mc"), QStringLiteral("AXGroup"));
        dock->append(overview);
    }
    void close() {
        dock->removeChild(overview);
        overview.reset();
    }

    // Adds a display to the open overview (under `parent` when given) and returns its
    // Space list.
    Element addDisplay(const std::optional<QRectF>& frame, const Element& parent = nullptr) {
        open();
        auto display = FakeAccessibilityElement::make(QStringLiteral("mc.display"),
                                                      QStringLiteral("AXGroup"), frame);
        auto outer = FakeAccessibilityElement::make({}, QStringLiteral("AXGroup"));
        auto inner = FakeAccessibilityElement::make({}, QStringLiteral("AXGroup"));
        auto list = FakeAccessibilityElement::make(QStringLiteral("mc.spaces.list"),
                                                   QStringLiteral("AXList"));
        display->append(outer);
        outer->append(inner);
        inner->append(list);
        (parent ? parent : overview)->append(display);
        return list;
    }

    static Element addButton(const Element& list, const std::optional<QRectF>& frame,
                             const QString& title = {}) {
        auto button = FakeAccessibilityElement::make({}, QStringLiteral("AXButton"), frame);
        if (!title.isEmpty())
            button->setAttribute(QStringLiteral("AXTitle"), title);
        list->append(button);
        return button;
    }

    // The button that adds a Space, which sits in the Space list beside the thumbnails.
    static void addAddButton(const Element& list, const QRectF& frame) {
        list->append(FakeAccessibilityElement::make(QStringLiteral("mc.spaces.add"),
                                                    QStringLiteral("AXButton"), frame));
    }

    FakeAccessibilityTree tree;
    Element dock = FakeAccessibilityElement::make();
    Element overview;
};

} // namespace deskmark
