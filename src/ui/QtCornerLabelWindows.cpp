#include "ui/QtCornerLabelWindows.h"

namespace deskmark {

void QtCornerLabelWindows::show(const QString& displayUUID, const CornerLabel& label,
                                const RgbColor& background, double bgOpacity) {
    std::unique_ptr<CornerLabelView>& view = views_[displayUUID];
    if (!view)
        view = std::make_unique<CornerLabelView>(placer_, displayUUID);
    view->setLabel(label, background, bgOpacity);
}

void QtCornerLabelWindows::hide(const QString& displayUUID) {
    if (CornerLabelView* shown = view(displayUUID))
        shown->orderOut();
}

void QtCornerLabelWindows::setBackground(const QString& displayUUID, const RgbColor& background,
                                         double bgOpacity) {
    if (CornerLabelView* shown = view(displayUUID))
        shown->setBackground(background, bgOpacity);
}

void QtCornerLabelWindows::move(const QString& displayUUID, const QPointF& topLeft) {
    if (CornerLabelView* shown = view(displayUUID))
        shown->moveTo(topLeft);
}

void QtCornerLabelWindows::fade(const QString& displayUUID, bool visible) {
    if (CornerLabelView* shown = view(displayUUID))
        shown->fadeTo(visible, int(fadeDuration.count()));
}

CornerLabelView* QtCornerLabelWindows::view(const QString& displayUUID) const {
    const auto it = views_.find(displayUUID);
    return it == views_.end() ? nullptr : it->second.get();
}

} // namespace deskmark
