#include "core/overlay/OverviewLabelLayout.h"

#include <algorithm>
#include <cmath>

namespace deskmark {

namespace {

OverviewLabelScreen::Box layoutBox(const ResolvedLabel& label, const OverviewLabelStyle& style,
                                   const LabelTextMeasurer& measurer) {
    const QRectF& thumb = label.frame;
    // A thumbnail narrower than its padding leaves no room rather than a negative width.
    const double textWidth = std::max(thumb.width() - 2 * style.hPadding, 0.0);
    const double textHeight = std::ceil(measurer.fittingHeight(
        label.name, style.fontSize, style.weight, textWidth, style.singleLine));
    const double height = textHeight + 2 * style.vPadding;

    // How far the box's bottom edge sits above the thumbnail's bottom edge.
    double lift = 0;
    switch (style.vPosition) {
    case MCLabelVPosition::Top:
        lift = thumb.height() - height;
        break;
    case MCLabelVPosition::Center:
        lift = (thumb.height() - height) / 2;
        break;
    case MCLabelVPosition::Bottom:
        break;
    }

    const QRectF& screen = label.screen.frame;
    OverviewLabelScreen::Box box;
    box.rect = QRectF(thumb.left() - screen.left(), thumb.bottom() - lift - height - screen.top(),
                      thumb.width(), height);
    box.textRect = QRectF(style.hPadding, (height - textHeight) / 2, textWidth, textHeight);
    box.text = label.name;
    box.background = label.bgColor;
    box.textColor = label.textColor;
    return box;
}

} // namespace

QList<OverviewLabelScreen> OverviewLabelLayout::layout(const QList<ResolvedLabel>& labels,
                                                       const OverviewLabelStyle& style,
                                                       const LabelTextMeasurer& measurer) {
    QList<OverviewLabelScreen> screens;
    for (const ResolvedLabel& label : labels) {
        auto it = std::find_if(screens.begin(), screens.end(), [&](const OverviewLabelScreen& s) {
            return s.screen == label.screen;
        });
        if (it == screens.end())
            it = screens.insert(screens.end(), OverviewLabelScreen{label.screen, {}});
        it->boxes << layoutBox(label, style, measurer);
    }
    return screens;
}

} // namespace deskmark
