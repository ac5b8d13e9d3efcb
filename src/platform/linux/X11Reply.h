#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace deskmark {

// An xcb reply, freed when it goes out of scope.
struct FreeX11Reply {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename T> using X11Reply = std::unique_ptr<T, FreeX11Reply>;

// Waits for the reply to `cookie`. An error answer is freed here rather than left in
// the event queue, and gives no reply.
template <typename T, typename Cookie>
X11Reply<T> takeX11Reply(T* (*fetch)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                         xcb_connection_t* connection, Cookie cookie) {
    xcb_generic_error_t* error = nullptr;
    X11Reply<T> reply(fetch(connection, cookie, &error));
    std::free(error);
    return reply;
}

} // namespace deskmark
