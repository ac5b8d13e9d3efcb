#pragma once

#include <QList>
#include <QRect>
#include <QSize>

#include <optional>

namespace deskmark {

// The part of one monitor that panels and docks leave to ordinary windows, worked out
// from the space they reserve along the edges of the root window. The root window's
// single work area cannot say this for several monitors: a panel along the top of one
// monitor moves the work area's top edge down across all of them.
class MonitorWorkArea {
public:
    // The space a window reserves along the root window's edges (_NET_WM_STRUT_PARTIAL),
    // in root pixels: a thickness per edge, and the first and last pixel along that edge
    // which the reservation covers.
    struct Strut {
        int left = 0;
        int right = 0;
        int top = 0;
        int bottom = 0;
        int leftStartY = 0;
        int leftEndY = 0;
        int rightStartY = 0;
        int rightEndY = 0;
        int topStartX = 0;
        int topEndX = 0;
        int bottomStartX = 0;
        int bottomEndX = 0;

        // From the twelve values of _NET_WM_STRUT_PARTIAL; none for fewer values.
        static std::optional<Strut> fromPartial(const QList<quint32>& values);
        // From the four values of the older _NET_WM_STRUT, whose reservations span the
        // whole edge of a root window of that size; none for fewer values.
        static std::optional<Strut> fromFull(const QList<quint32>& values, const QSize& root);

        friend bool operator==(const Strut&, const Strut&) = default;
    };

    // The monitor's area without every reservation that reaches into it. Without any
    // strut (window managers that draw their own panels publish only the work area) it is
    // the monitor's part of the work area. A reservation that would leave nothing of the
    // monitor is a client's mistake and is not applied; nor is a work area that misses it.
    static QRect available(const QRect& monitor, const QList<Strut>& struts, const QSize& root,
                           const std::optional<QRect>& workArea);
};

} // namespace deskmark
