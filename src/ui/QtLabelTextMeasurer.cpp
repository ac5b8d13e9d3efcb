#include "ui/QtLabelTextMeasurer.h"

#include "ui/LabelFont.h"

#include <QFontMetricsF>

#include <limits>

namespace deskmark {

double QtLabelTextMeasurer::fittingHeight(const QString& text, double fontSize, CornerWeight weight,
                                          double width, bool singleLine) const {
    const QFontMetricsF metrics(LabelFont::font(fontSize, weight));
    if (singleLine)
        return metrics.height();
    const QRectF room(0, 0, width, std::numeric_limits<int>::max());
    return metrics.boundingRect(room, Qt::TextWrapAnywhere, text).height();
}

} // namespace deskmark
