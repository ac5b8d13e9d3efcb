#pragma once

#include "core/bookmarks/WindowMover.h"
#include "platform/linux/X11WindowProperties.h"

namespace deskmark {

// Applications' windows from the EWMH client list, moved by asking the window manager
// (_NET_MOVERESIZE_WINDOW).
class X11WindowMover : public WindowMover {
public:
    QList<Window> windows(const QString& windowClass) const override;
    void moveWindow(quint64 window, QPointF topLeft) override;

private:
    mutable X11WindowProperties x11_;
};

} // namespace deskmark
