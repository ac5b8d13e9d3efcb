#pragma once

#include "core/overlay/AXDisplayThumbs.h"
#include "core/overlay/AccessibilityTree.h"

#include <QList>
#include <QRectF>

namespace deskmark {

// Reads the desktop overview (Mission Control) out of the accessibility tree of the
// program that draws it: whether it is open, and where each display's Space thumbnails
// lie. Keeps nothing: every call walks the tree again, and every failed query simply
// yields fewer records.
class AXThumbnails {
public:
    // The display elements of the open overview, and whether they came from the window
    // manager, whose thumbnail rectangles need correcting.
    struct MCDisplays {
        QList<AXElement> displays;
        bool fromWindowManager = false;
    };

    explicit AXThumbnails(const AccessibilityTree& tree) : tree_(tree) {}

    AXElement appElement(const QString& bundleID) const;
    // Cheap: looks only at the Dock's direct children for the "mc" element.
    bool isMissionControlPresent() const;
    MCDisplays mcDisplays() const;
    // One record per display element with a frame and at least one thumbnail, in the
    // order of the display elements; empty while the overview is closed.
    QList<AXDisplayThumbs> byDisplay() const;
    // The frame of every Space button anywhere under the display elements, in tree order.
    QList<QRectF> allButtonFrames() const;

    // Same count, and pairwise min x, min y, width and height within the tolerance.
    static bool framesEqual(const QList<QRectF>& a, const QList<QRectF>& b, double tolerance);

private:
    const AccessibilityTree& tree_;
};

} // namespace deskmark
