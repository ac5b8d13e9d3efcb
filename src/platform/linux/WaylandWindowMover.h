#pragma once

#include "core/bookmarks/WindowMover.h"

namespace deskmark {

// Other programs' windows in a Wayland session: a client can neither list nor move them,
// so there are none to find and a new browser window stays where the window manager
// opened it (sway: on the focused output).
class WaylandWindowMover : public WindowMover {
public:
    QList<Window> windows(const QString&) const override { return {}; }
    void moveWindow(quint64, QPointF) override {}
};

} // namespace deskmark
