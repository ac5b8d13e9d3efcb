#include "platform/linux/X11Compositor.h"

#include <QGuiApplication>
#include <QtGui/qguiapplication_platform.h>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace deskmark {

bool X11Compositor::isRunning() {
    const auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>()
                              : nullptr;
    xcb_connection_t* connection = x11 ? x11->connection() : nullptr;
    if (!connection)
        return false;
    int screen = 0;
    if (const char* display = std::getenv("DISPLAY")) {
        const QByteArray name(display);
        const qsizetype dot = name.lastIndexOf('.');
        if (dot > name.lastIndexOf(':'))
            screen = name.mid(dot + 1).toInt();
    }
    const QByteArray selection = selectionName(screen);
    const xcb_intern_atom_cookie_t atomCookie =
        xcb_intern_atom(connection, 1, quint16(selection.size()), selection.constData());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
        xcb_intern_atom_reply(connection, atomCookie, nullptr), &std::free);
    return atom && atom->atom != XCB_ATOM_NONE && hasOwner(connection, atom->atom);
}

QByteArray X11Compositor::selectionName(int screenNumber) {
    return "_NET_WM_CM_S" + QByteArray::number(screenNumber);
}

bool X11Compositor::hasOwner(xcb_connection_t* connection, quint32 selection) {
    const std::unique_ptr<xcb_get_selection_owner_reply_t, decltype(&std::free)> owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection),
                                      nullptr),
        &std::free);
    return owner && owner->owner != XCB_WINDOW_NONE;
}

} // namespace deskmark
