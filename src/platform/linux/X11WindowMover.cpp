#include "platform/linux/X11WindowMover.h"

namespace deskmark {

namespace {

constexpr quint32 kStateRemove = 0;
constexpr quint32 kStateAdd = 1;
// From a pager or similar tool acting for the user: window managers obey it at once.
constexpr quint32 kSourcePager = 2;
constexpr quint32 kNorthWestGravity = 1;
constexpr quint32 kMoveXY = (1u << 8) | (1u << 9);

} // namespace

QList<WindowMover::Window> X11WindowMover::windows(const QString& windowClass) const {
    QList<Window> result;
    for (const quint32 id : x11_.clientList()) {
        const QStringList names = x11_.windowClass(id);
        if (!names.contains(windowClass, Qt::CaseInsensitive))
            continue;
        // Toolkits put the id on the window, or on the client leader shared by a program's
        // windows.
        QString startupID = x11_.text(id, "_NET_STARTUP_ID");
        if (startupID.isEmpty()) {
            if (const std::optional<quint32> leader = x11_.number(id, "WM_CLIENT_LEADER"))
                startupID = x11_.text(*leader, "_NET_STARTUP_ID");
        }
        result << Window{id, startupID, QRectF(x11_.frame(id).value_or(QRect()))};
    }
    return result;
}

void X11WindowMover::moveWindow(quint64 window, QPointF topLeft) {
    const auto id = quint32(window);
    const quint32 vertical = x11_.atom("_NET_WM_STATE_MAXIMIZED_VERT");
    const quint32 horizontal = x11_.atom("_NET_WM_STATE_MAXIMIZED_HORZ");
    const QStringList state = x11_.atomNames(id, "_NET_WM_STATE");
    const bool maximized = state.contains(QStringLiteral("_NET_WM_STATE_MAXIMIZED_VERT")) ||
                           state.contains(QStringLiteral("_NET_WM_STATE_MAXIMIZED_HORZ"));
    // A maximized window is let go, moved, and maximized again where it now lies.
    if (maximized)
        x11_.sendMessage(id, "_NET_WM_STATE", {kStateRemove, vertical, horizontal, kSourcePager, 0});
    x11_.sendMessage(id, "_NET_MOVERESIZE_WINDOW",
                     {kNorthWestGravity | kMoveXY | (kSourcePager << 12),
                      quint32(qRound(topLeft.x())), quint32(qRound(topLeft.y())), 0, 0});
    if (maximized)
        x11_.sendMessage(id, "_NET_WM_STATE", {kStateAdd, vertical, horizontal, kSourcePager, 0});
}

} // namespace deskmark
