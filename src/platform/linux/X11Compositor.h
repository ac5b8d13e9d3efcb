#pragma once

#include <QByteArray>
#include <QtGlobal>

struct xcb_connection_t;

namespace deskmark {

// Whether a compositing manager runs on the X screen the program uses: only then are
// translucent windows blended with what lies below them, instead of drawn over black.
// A compositing manager shows that it runs by owning the selection _NET_WM_CM_S<screen>.
class X11Compositor {
public:
    // The selection's name for that screen number.
    static QByteArray selectionName(int screenNumber);
    // Whether anyone owns the selection (an interned atom) now.
    static bool hasOwner(xcb_connection_t* connection, quint32 selection);
};

} // namespace deskmark
