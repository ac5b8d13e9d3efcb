#pragma once

#include <QtGlobal>

struct xcb_connection_t;

namespace deskmark {

// The root window of screen screenNumber on an open connection (xcb_connect reports the
// number $DISPLAY names); 0 when the server has no such screen.
quint32 rootWindowOfScreen(xcb_connection_t* connection, int screenNumber);

} // namespace deskmark
