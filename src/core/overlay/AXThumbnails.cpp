#include "core/overlay/AXThumbnails.h"

#include <algorithm>
#include <cmath>

namespace deskmark {

namespace {

const QString kIdentifier = QStringLiteral("AXIdentifier");
const QString kRole = QStringLiteral("AXRole");
const QString kTitle = QStringLiteral("AXTitle");
const QString kButton = QStringLiteral("AXButton");

const QString kDock = QStringLiteral("com.apple.dock");
const QString kWindowManager = QStringLiteral("com.apple.WindowManager");
const QString kOverview = QStringLiteral("mc");
const QString kDisplay = QStringLiteral("mc.display");
const QString kSpacesList = QStringLiteral("mc.spaces.list");
const QString kAddSpace = QStringLiteral("mc.spaces.add");

bool hasIdentifier(const AXElement& element, const QString& identifier) {
    return element->stringAttribute(kIdentifier) == identifier;
}

// A Space button: any button except the one that adds a Space.
bool isSpaceButton(const AXElement& element) {
    return element->stringAttribute(kRole) == kButton && !hasIdentifier(element, kAddSpace);
}

QList<AXElement> childrenWithIdentifier(const AXElement& parent, const QString& identifier) {
    QList<AXElement> result;
    for (const AXElement& child : parent->children()) {
        if (hasIdentifier(child, identifier))
            result << child;
    }
    return result;
}

// Depth first until the Space list; its buttons are the thumbnails.
void collect(const AXElement& element, QList<AXThumb>& into) {
    if (hasIdentifier(element, kSpacesList)) {
        for (const AXElement& child : element->children()) {
            if (!isSpaceButton(child))
                continue;
            if (const auto frame = child->frame())
                into << AXThumb{child->stringAttribute(kTitle).value_or(QString()), *frame, child};
        }
        return;
    }
    for (const AXElement& child : element->children())
        collect(child, into);
}

void collectButtonFrames(const AXElement& element, QList<QRectF>& into) {
    if (isSpaceButton(element)) {
        if (const auto frame = element->frame())
            into << *frame;
    }
    for (const AXElement& child : element->children())
        collectButtonFrames(child, into);
}

// The window manager reports each thumbnail as a rectangle centred on its origin and
// larger than what is drawn; this maps it onto the visible thumbnail.
QRectF correctedWindowManagerFrame(const QRectF& reported, const QRectF& display) {
    const double aspect = display.width() > 0 ? display.height() / display.width() : 0.5625;
    const double inset = reported.width() * 0.072;
    const double width = reported.width() - 2 * inset;
    return QRectF(reported.x() - reported.width() * 0.5 + inset,
                  reported.y() - reported.height() * 0.5 + inset, width, aspect * width);
}

} // namespace

AXElement AXThumbnails::appElement(const QString& bundleID) const {
    return tree_.applicationElement(bundleID);
}

bool AXThumbnails::isMissionControlPresent() const {
    const AXElement dock = appElement(kDock);
    if (!dock)
        return false;
    const QList<AXElement> children = dock->children();
    return std::any_of(children.cbegin(), children.cend(),
                       [](const AXElement& child) { return hasIdentifier(child, kOverview); });
}

AXThumbnails::MCDisplays AXThumbnails::mcDisplays() const {
    if (const AXElement dock = appElement(kDock)) {
        for (const AXElement& child : dock->children()) {
            if (!hasIdentifier(child, kOverview))
                continue;
            QList<AXElement> displays = childrenWithIdentifier(child, kDisplay);
            if (!displays.isEmpty())
                return {std::move(displays), false};
            break;
        }
    }
    if (const AXElement windowManager = appElement(kWindowManager)) {
        QList<AXElement> displays = childrenWithIdentifier(windowManager, kDisplay);
        if (!displays.isEmpty())
            return {std::move(displays), true};
    }
    return {};
}

QList<AXDisplayThumbs> AXThumbnails::byDisplay() const {
    const MCDisplays source = mcDisplays();
    QList<AXDisplayThumbs> result;
    for (const AXElement& display : source.displays) {
        const auto displayFrame = display->frame();
        if (!displayFrame)
            continue;
        QList<AXThumb> thumbs;
        collect(display, thumbs);
        if (thumbs.isEmpty())
            continue;
        if (source.fromWindowManager) {
            for (AXThumb& thumb : thumbs)
                thumb.frame = correctedWindowManagerFrame(thumb.frame, *displayFrame);
        }
        std::stable_sort(thumbs.begin(), thumbs.end(), [](const AXThumb& a, const AXThumb& b) {
            return a.frame.left() < b.frame.left();
        });
        result << AXDisplayThumbs{*displayFrame, std::move(thumbs)};
    }
    return result;
}

QList<QRectF> AXThumbnails::allButtonFrames() const {
    QList<QRectF> frames;
    for (const AXElement& display : mcDisplays().displays)
        collectButtonFrames(display, frames);
    return frames;
}

bool AXThumbnails::framesEqual(const QList<QRectF>& a, const QList<QRectF>& b, double tolerance) {
    if (a.size() != b.size())
        return false;
    const auto near = [tolerance](double x, double y) { return std::abs(x - y) <= tolerance; };
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (!near(a[i].left(), b[i].left()) || !near(a[i].top(), b[i].top()) ||
            !near(a[i].width(), b[i].width()) || !near(a[i].height(), b[i].height()))
            return false;
    }
    return true;
}

} // namespace deskmark
