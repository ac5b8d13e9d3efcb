#pragma once

#include "core/overlay/LabelTextMeasurer.h"
#include "core/overlay/OverviewLabelScreen.h"
#include "core/overlay/OverviewLabelStyle.h"
#include "core/overlay/ResolvedLabel.h"

#include <QList>

namespace deskmark {

// Where each overview label's box and text go.
class OverviewLabelLayout {
public:
    // One entry per screen, in the order the screens first appear among the labels. A box
    // is as wide as its thumbnail and as tall as the text plus the vertical padding; it
    // sits at the thumbnail's bottom, middle or top edge as the style says.
    static QList<OverviewLabelScreen> layout(const QList<ResolvedLabel>& labels,
                                             const OverviewLabelStyle& style,
                                             const LabelTextMeasurer& measurer);
};

} // namespace deskmark
