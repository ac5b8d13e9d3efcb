#include "platform/linux/X11Compositor.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace deskmark {

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
