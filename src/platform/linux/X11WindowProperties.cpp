#include "platform/linux/X11WindowProperties.h"

#include "platform/linux/X11Screen.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace deskmark {

namespace {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename T> using Reply = std::unique_ptr<T, FreeReply>;

// Far more than any window property Deskmark reads; the server sends only what there is.
constexpr quint32 kWholeProperty = 1u << 16;

} // namespace

X11WindowProperties::X11WindowProperties() {
    int screenNumber = 0;
    connection_ = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(connection_))
        return;
    root_ = rootWindowOfScreen(connection_, screenNumber);
}

X11WindowProperties::~X11WindowProperties() { xcb_disconnect(connection_); }

bool X11WindowProperties::isConnected() const {
    return root_ != 0 && !xcb_connection_has_error(connection_);
}

quint32 X11WindowProperties::atom(const char* name) {
    const QByteArray key(name);
    if (const auto found = atoms_.constFind(key); found != atoms_.constEnd())
        return *found;
    Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_, xcb_intern_atom(connection_, 0, quint16(key.size()), key.constData()),
        nullptr));
    const quint32 value = reply ? reply->atom : quint32(XCB_ATOM_NONE);
    atoms_.insert(key, value);
    return value;
}

QByteArray X11WindowProperties::property(quint32 window, quint32 property, quint32 type,
                                         quint8* format) {
    if (!isConnected())
        return {};
    Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection_, xcb_get_property(connection_, 0, window, property, type, 0, kWholeProperty),
        nullptr));
    if (!reply || reply->type == XCB_ATOM_NONE)
        return {};
    if (format)
        *format = reply->format;
    return QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                      xcb_get_property_value_length(reply.get()));
}

QList<quint32> X11WindowProperties::clientList() {
    const QByteArray data = property(root_, atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW);
    QList<quint32> windows;
    const auto* values = reinterpret_cast<const quint32*>(data.constData());
    for (qsizetype i = 0; i < data.size() / 4; ++i)
        windows << values[i];
    return windows;
}

std::optional<quint32> X11WindowProperties::activeWindow() {
    const std::optional<quint32> window = number(root_, "_NET_ACTIVE_WINDOW");
    if (!window || *window == 0)
        return std::nullopt;
    return window;
}

QStringList X11WindowProperties::windowClass(quint32 window) {
    const QByteArray data = property(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
    QStringList names;
    for (const QByteArray& part : data.split('\0')) {
        if (!part.isEmpty())
            names << QString::fromLocal8Bit(part);
    }
    return names;
}

QString X11WindowProperties::text(quint32 window, const char* name) {
    QByteArray data = property(window, atom(name), XCB_GET_PROPERTY_TYPE_ANY);
    if (const qsizetype end = data.indexOf('\0'); end >= 0)
        data.truncate(end);
    return QString::fromUtf8(data);
}

std::optional<quint32> X11WindowProperties::number(quint32 window, const char* name) {
    quint8 format = 0;
    const QByteArray data = property(window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, &format);
    if (format != 32 || data.size() < 4)
        return std::nullopt;
    return *reinterpret_cast<const quint32*>(data.constData());
}

QStringList X11WindowProperties::atomNames(quint32 window, const char* name) {
    const QByteArray data = property(window, atom(name), XCB_ATOM_ATOM);
    QStringList names;
    const auto* values = reinterpret_cast<const quint32*>(data.constData());
    for (qsizetype i = 0; i < data.size() / 4; ++i) {
        Reply<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(
            connection_, xcb_get_atom_name(connection_, values[i]), nullptr));
        if (reply)
            names << QString::fromUtf8(xcb_get_atom_name_name(reply.get()),
                                       xcb_get_atom_name_name_length(reply.get()));
    }
    return names;
}

std::optional<QRect> X11WindowProperties::frame(quint32 window) {
    if (!isConnected())
        return std::nullopt;
    Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
    Reply<xcb_translate_coordinates_reply_t> origin(xcb_translate_coordinates_reply(
        connection_, xcb_translate_coordinates(connection_, window, root_, 0, 0), nullptr));
    if (!geometry || !origin)
        return std::nullopt;
    QRect area(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
    const QByteArray extents = property(window, atom("_NET_FRAME_EXTENTS"), XCB_ATOM_CARDINAL);
    if (extents.size() >= 16) {
        const auto* sides = reinterpret_cast<const quint32*>(extents.constData());
        area.adjust(-int(sides[0]), -int(sides[2]), int(sides[1]), int(sides[3]));
    }
    return area;
}

void X11WindowProperties::sendMessage(quint32 window, const char* type,
                                      const std::array<quint32, 5>& data) {
    if (!isConnected())
        return;
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(type);
    for (size_t i = 0; i < data.size(); ++i)
        event.data.data32[i] = data[i];
    xcb_send_event(connection_, 0, root_,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    xcb_flush(connection_);
}

} // namespace deskmark
