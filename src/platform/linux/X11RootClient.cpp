#include "platform/linux/X11RootClient.h"

#include "platform/linux/X11Reply.h"
#include "platform/linux/X11Screen.h"

#include <QSocketNotifier>

#include <xcb/randr.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace deskmark {

namespace {

// In the order of X11RootClient::Atom.
constexpr const char* kAtomNames[] = {"_NET_SUPPORTING_WM_CHECK",
                                      "_NET_NUMBER_OF_DESKTOPS",
                                      "_NET_CURRENT_DESKTOP",
                                      "_NET_DESKTOP_NAMES",
                                      "I3_SOCKET_PATH",
                                      "UTF8_STRING",
                                      "EDID"};

// Property lengths are counted in 32-bit units; this is far more than any desktop-name
// list, and the server sends only what there is.
constexpr quint32 kWholeProperty = 1u << 16;
// The EDID base block, which holds every fact the display identity needs.
constexpr quint32 kEdidBaseBlock = 128 / 4;

QString atomName(xcb_connection_t* connection, xcb_get_atom_name_cookie_t cookie) {
    const auto reply = takeX11Reply(xcb_get_atom_name_reply, connection, cookie);
    if (!reply)
        return {};
    return QString::fromUtf8(xcb_get_atom_name_name(reply.get()),
                             xcb_get_atom_name_name_length(reply.get()));
}

QString outputName(xcb_connection_t* connection, xcb_randr_get_output_info_cookie_t cookie) {
    const auto reply = takeX11Reply(xcb_randr_get_output_info_reply, connection, cookie);
    if (!reply)
        return {};
    return QString::fromUtf8(
        reinterpret_cast<const char*>(xcb_randr_get_output_info_name(reply.get())),
        xcb_randr_get_output_info_name_length(reply.get()));
}

QByteArray outputEdid(xcb_connection_t* connection, xcb_randr_get_output_property_cookie_t cookie) {
    const auto reply = takeX11Reply(xcb_randr_get_output_property_reply, connection, cookie);
    if (!reply || reply->format != 8)
        return {};
    return QByteArray(
        reinterpret_cast<const char*>(xcb_randr_get_output_property_data(reply.get())),
        xcb_randr_get_output_property_data_length(reply.get()));
}

} // namespace

X11RootClient::X11RootClient(QObject* parent) : QObject(parent) {
    int screenNumber = 0;
    connection_ = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(connection_))
        return;
    root_ = rootWindowOfScreen(connection_, screenNumber);
    if (!root_) {
        // The display string names a screen the server does not have.
        xcb_disconnect(connection_);
        connection_ = nullptr;
        return;
    }
    internAtoms();
    watchRoot();

    notifier_ =
        new QSocketNotifier(xcb_get_file_descriptor(connection_), QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &X11RootClient::readEvents);
    xcb_flush(connection_);
    scheduleRead();
}

X11RootClient::~X11RootClient() {
    delete notifier_; // before the socket it watches is closed
    if (connection_)
        xcb_disconnect(connection_);
}

bool X11RootClient::isConnected() const {
    return connection_ && root_ && !xcb_connection_has_error(connection_);
}

void X11RootClient::internAtoms() {
    std::array<xcb_intern_atom_cookie_t, static_cast<int>(Atom::Count)> cookies{};
    static_assert(std::size(kAtomNames) == cookies.size());
    // Created when missing: a window manager that starts later sets these very atoms,
    // and their change notices must match.
    for (size_t i = 0; i < cookies.size(); ++i)
        cookies[i] =
            xcb_intern_atom(connection_, 0, uint16_t(strlen(kAtomNames[i])), kAtomNames[i]);
    for (size_t i = 0; i < cookies.size(); ++i) {
        const auto reply = takeX11Reply(xcb_intern_atom_reply, connection_, cookies[i]);
        atoms_[i] = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }
}

void X11RootClient::watchRoot() {
    // Adding or removing a RandR monitor sends no RandR event, only a ConfigureNotify
    // of the root window.
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &mask);

    const xcb_query_extension_reply_t* randr = xcb_get_extension_data(connection_, &xcb_randr_id);
    if (!randr || !randr->present)
        return;
    const auto version = takeX11Reply(xcb_randr_query_version_reply, connection_,
                                      xcb_randr_query_version(connection_, 1, 5));
    hasMonitors_ = version && (version->major_version > 1 ||
                               (version->major_version == 1 && version->minor_version >= 5));
    if (!hasMonitors_)
        return;
    randrFirstEvent_ = randr->first_event;
    xcb_randr_select_input(
        connection_, root_,
        XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE |
            XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE | XCB_RANDR_NOTIFY_MASK_OUTPUT_PROPERTY);
}

// Takes every event the server has sent so far and reports what changed, once per kind.
void X11RootClient::readEvents() {
    readScheduled_ = false;
    if (!notifier_ || !notifier_->isEnabled())
        return;
    bool desktops = false;
    bool monitors = false;
    while (xcb_generic_event_t* event = xcb_poll_for_event(connection_)) {
        const uint8_t type = event->response_type & 0x7F;
        if (type == XCB_PROPERTY_NOTIFY) {
            const auto* notify = reinterpret_cast<const xcb_property_notify_event_t*>(event);
            desktops |= notify->window == root_ && (notify->atom == atom(Atom::SupportingWmCheck) ||
                                                    notify->atom == atom(Atom::NumberOfDesktops) ||
                                                    notify->atom == atom(Atom::CurrentDesktop) ||
                                                    notify->atom == atom(Atom::DesktopNames));
        } else if (type == XCB_CONFIGURE_NOTIFY) {
            monitors |=
                reinterpret_cast<const xcb_configure_notify_event_t*>(event)->window == root_;
        } else if (hasMonitors_ && type == randrFirstEvent_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY) {
            monitors = true;
        } else if (hasMonitors_ && type == randrFirstEvent_ + XCB_RANDR_NOTIFY) {
            // Of the output properties only the EDID matters; others, such as a laptop
            // panel's backlight, change often.
            const auto* notify = reinterpret_cast<const xcb_randr_notify_event_t*>(event);
            monitors |= notify->subCode != XCB_RANDR_NOTIFY_OUTPUT_PROPERTY ||
                        notify->u.op.atom == atom(Atom::Edid);
        }
        std::free(event);
    }
    if (desktops)
        Q_EMIT desktopsChanged();
    if (monitors)
        Q_EMIT monitorsChanged();
    if (xcb_connection_has_error(connection_)) {
        notifier_->setEnabled(false);
        Q_EMIT disconnected();
    }
}

// Waiting for a reply makes xcb read whatever else is on the socket, events included.
// Those then sit in xcb's queue where the socket notifier cannot see them, so every
// read that waited schedules one pass over the queue.
void X11RootClient::scheduleRead() {
    if (readScheduled_)
        return;
    readScheduled_ = true;
    QMetaObject::invokeMethod(this, &X11RootClient::readEvents, Qt::QueuedConnection);
}

bool X11RootClient::hasWindowManager() {
    if (!isConnected())
        return false;
    const auto checkOf = [this](xcb_window_t window) -> std::optional<xcb_window_t> {
        const auto reply =
            takeX11Reply(xcb_get_property_reply, connection_,
                         xcb_get_property(connection_, 0, window, atom(Atom::SupportingWmCheck),
                                          XCB_ATOM_WINDOW, 0, 1));
        if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) != 4)
            return std::nullopt;
        return *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
    };
    // A window manager that died leaves its check window id behind on the root; only
    // a live check window that names itself counts.
    const auto window = checkOf(root_);
    const bool running = window && checkOf(*window) == window;
    scheduleRead();
    return running;
}

std::optional<quint32> X11RootClient::cardinal(Property property) {
    if (!isConnected())
        return std::nullopt;
    const auto reply = takeX11Reply(
        xcb_get_property_reply, connection_,
        xcb_get_property(connection_, 0, root_, atom(property), XCB_ATOM_CARDINAL, 0, 1));
    scheduleRead();
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) != 4)
        return std::nullopt;
    return *static_cast<const quint32*>(xcb_get_property_value(reply.get()));
}

QStringList X11RootClient::utf8List(Property property) {
    if (!isConnected())
        return {};
    const auto reply = takeX11Reply(xcb_get_property_reply, connection_,
                                    xcb_get_property(connection_, 0, root_, atom(property),
                                                     atom(Atom::Utf8String), 0, kWholeProperty));
    scheduleRead();
    if (!reply || reply->format != 8)
        return {};
    const QByteArray data(static_cast<const char*>(xcb_get_property_value(reply.get())),
                          xcb_get_property_value_length(reply.get()));
    if (data.isEmpty())
        return {};
    QStringList strings;
    for (const QByteArray& part : data.split('\0'))
        strings << QString::fromUtf8(part);
    if (data.endsWith('\0'))
        strings.removeLast(); // the terminator of the last string, not an empty string
    return strings;
}

bool X11RootClient::setUtf8List(Property property, const QStringList& strings) {
    if (!isConnected())
        return false;
    QByteArray data;
    for (const QString& string : strings)
        data += string.toUtf8() + '\0';
    const xcb_void_cookie_t cookie = xcb_change_property_checked(
        connection_, XCB_PROP_MODE_REPLACE, root_, atom(property), atom(Atom::Utf8String), 8,
        quint32(data.size()), data.constData());
    const X11Reply<xcb_generic_error_t> error(xcb_request_check(connection_, cookie));
    return !error;
}

QList<RandrMonitor> X11RootClient::monitors() {
    if (!isConnected() || !hasMonitors_)
        return {};
    const auto reply = takeX11Reply(xcb_randr_get_monitors_reply, connection_,
                                    xcb_randr_get_monitors(connection_, root_, 1));
    if (!reply) {
        scheduleRead();
        return {};
    }
    // All follow-up requests go out before the first of their answers is awaited.
    struct Pending {
        xcb_get_atom_name_cookie_t name;
        QList<xcb_randr_get_output_info_cookie_t> outputs;
        std::optional<xcb_randr_get_output_property_cookie_t> edid;
    };
    QList<RandrMonitor> monitors;
    QList<Pending> pending;
    for (auto it = xcb_randr_get_monitors_monitors_iterator(reply.get()); it.rem;
         xcb_randr_monitor_info_next(&it)) {
        const xcb_randr_monitor_info_t* info = it.data;
        RandrMonitor monitor;
        monitor.primary = info->primary;
        monitors << monitor;

        Pending requests{xcb_get_atom_name(connection_, info->name), {}, std::nullopt};
        const xcb_randr_output_t* outputs = xcb_randr_monitor_info_outputs(info);
        const int outputCount = xcb_randr_monitor_info_outputs_length(info);
        for (int i = 0; i < outputCount; ++i)
            requests.outputs << xcb_randr_get_output_info(connection_, outputs[i],
                                                          XCB_CURRENT_TIME);
        if (outputCount > 0)
            requests.edid = xcb_randr_get_output_property(connection_, outputs[0], atom(Atom::Edid),
                                                          XCB_ATOM_ANY, 0, kEdidBaseBlock, 0, 0);
        pending << requests;
    }
    for (qsizetype i = 0; i < monitors.size(); ++i) {
        monitors[i].name = atomName(connection_, pending[i].name);
        for (const auto cookie : pending[i].outputs)
            monitors[i].outputs << outputName(connection_, cookie);
        if (pending[i].edid)
            monitors[i].edid = outputEdid(connection_, *pending[i].edid);
    }
    scheduleRead();
    return monitors;
}

bool X11RootClient::sendMessage(Property property, const std::array<quint32, 5>& data) {
    if (!isConnected())
        return false;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = root_;
    message.type = atom(property);
    std::copy(data.begin(), data.end(), message.data.data32);
    xcb_send_event(connection_, 0, root_,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    return xcb_flush(connection_) > 0;
}

} // namespace deskmark
