#include "platform/linux/X11Screen.h"

#include <xcb/xcb.h>

namespace deskmark {

quint32 rootWindowOfScreen(xcb_connection_t* connection, int screenNumber) {
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < screenNumber && screens.rem > 0; ++i)
        xcb_screen_next(&screens);
    return screens.rem > 0 ? screens.data->root : 0;
}

} // namespace deskmark
