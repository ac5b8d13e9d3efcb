#include "core/overlay/MonitorWorkArea.h"

#include <algorithm>
#include <limits>

namespace deskmark {

namespace {

// Values beyond any screen (a client's garbage) must not overflow the arithmetic.
int pixels(quint32 value) {
    return int(std::min<quint32>(value, std::numeric_limits<int>::max() / 4));
}

// The rectangle of the root window that one edge's reservation covers; empty when the
// reservation has no depth or no length.
QRect span(int x, int y, int width, int height) {
    return width > 0 && height > 0 ? QRect(x, y, width, height) : QRect();
}

} // namespace

std::optional<MonitorWorkArea::Strut> MonitorWorkArea::Strut::fromPartial(const QList<quint32>& v) {
    if (v.size() < 12)
        return std::nullopt;
    return Strut{pixels(v[0]), pixels(v[1]), pixels(v[2]),  pixels(v[3]),
                 pixels(v[4]), pixels(v[5]), pixels(v[6]),  pixels(v[7]),
                 pixels(v[8]), pixels(v[9]), pixels(v[10]), pixels(v[11])};
}

std::optional<MonitorWorkArea::Strut> MonitorWorkArea::Strut::fromFull(const QList<quint32>& v,
                                                                       const QSize& root) {
    if (v.size() < 4)
        return std::nullopt;
    const int lastX = root.width() - 1;
    const int lastY = root.height() - 1;
    return Strut{
        pixels(v[0]), pixels(v[1]), pixels(v[2]), pixels(v[3]), 0, lastY, 0, lastY, 0, lastX, 0,
        lastX};
}

QRect MonitorWorkArea::available(const QRect& monitor, const QList<Strut>& struts,
                                 const QSize& root, const std::optional<QRect>& workArea) {
    if (struts.isEmpty()) {
        const QRect inside = workArea ? monitor.intersected(*workArea) : QRect();
        return inside.isEmpty() ? monitor : inside;
    }
    // Edges as coordinates, the right and bottom ones just past the last pixel.
    int left = monitor.left();
    int top = monitor.top();
    int right = monitor.left() + monitor.width();
    int bottom = monitor.top() + monitor.height();
    for (const Strut& s : struts) {
        if (span(s.topStartX, 0, s.topEndX - s.topStartX + 1, s.top).intersects(monitor))
            top = std::max(top, s.top);
        if (span(s.bottomStartX, root.height() - s.bottom, s.bottomEndX - s.bottomStartX + 1,
                 s.bottom)
                .intersects(monitor))
            bottom = std::min(bottom, root.height() - s.bottom);
        if (span(0, s.leftStartY, s.left, s.leftEndY - s.leftStartY + 1).intersects(monitor))
            left = std::max(left, s.left);
        if (span(root.width() - s.right, s.rightStartY, s.right, s.rightEndY - s.rightStartY + 1)
                .intersects(monitor))
            right = std::min(right, root.width() - s.right);
    }
    if (right <= left || bottom <= top)
        return monitor;
    return QRect(left, top, right - left, bottom - top);
}

} // namespace deskmark
