#include "platform/linux/X11ScreenWatcher.h"

#include "platform/linux/X11Compositor.h"
#include "platform/linux/X11Reply.h"
#include "platform/linux/X11Screen.h"

#include <QSocketNotifier>

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <cstring>

namespace deskmark {

namespace {

// Far more than any of these properties holds; the server sends only what there is.
constexpr quint32 kWholeProperty = 1u << 16;

QList<quint32> replyValues(const xcb_get_property_reply_t* reply) {
    if (!reply || reply->format != 32)
        return {};
    const auto* data = static_cast<const quint32*>(xcb_get_property_value(reply));
    return QList<quint32>(data, data + xcb_get_property_value_length(reply) / 4);
}

} // namespace

X11ScreenWatcher::X11ScreenWatcher(QObject* parent) : QObject(parent) {
    int screenNumber = 0;
    connection_ = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(connection_))
        return;
    root_ = rootWindowOfScreen(connection_, screenNumber);
    if (!root_)
        return;
    internAtoms(screenNumber);
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &mask);

    const xcb_query_extension_reply_t* xfixes = xcb_get_extension_data(connection_, &xcb_xfixes_id);
    if (xfixes && xfixes->present) {
        // The version must be asked before any other request of the extension.
        const auto version = takeX11Reply(xcb_xfixes_query_version_reply, connection_,
                                          xcb_xfixes_query_version(connection_, 5, 0));
        hasXfixes_ = version != nullptr;
        xfixesFirstEvent_ = xfixes->first_event;
    }
    if (hasXfixes_)
        xcb_xfixes_select_selection_input(
            connection_, root_, atoms_[CompositorSelection],
            XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);

    notifier_ =
        new QSocketNotifier(xcb_get_file_descriptor(connection_), QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &X11ScreenWatcher::readEvents);
    readReservations();
    readCompositing();
    readActiveWindow();
}

X11ScreenWatcher::~X11ScreenWatcher() {
    delete notifier_; // before the socket it watches is closed
    xcb_disconnect(connection_);
}

bool X11ScreenWatcher::isConnected() const {
    return root_ && !xcb_connection_has_error(connection_);
}

std::optional<QRect> X11ScreenWatcher::availableArea(const QRect& monitor) const {
    if (!isConnected())
        return std::nullopt;
    return MonitorWorkArea::available(monitor, struts_, rootSize_, workArea_);
}

void X11ScreenWatcher::internAtoms(int screenNumber) {
    const QByteArray names[AtomCount] = {"_NET_CLIENT_LIST",
                                         "_NET_WORKAREA",
                                         "_NET_ACTIVE_WINDOW",
                                         "_NET_WM_STRUT_PARTIAL",
                                         "_NET_WM_STRUT",
                                         "_NET_WM_STATE",
                                         "_NET_WM_STATE_FULLSCREEN",
                                         X11Compositor::selectionName(screenNumber)};
    std::array<xcb_intern_atom_cookie_t, AtomCount> cookies{};
    // Created when missing, so that a window manager or compositor that starts later
    // sets these very atoms.
    for (int i = 0; i < AtomCount; ++i)
        cookies[i] =
            xcb_intern_atom(connection_, 0, quint16(names[i].size()), names[i].constData());
    for (int i = 0; i < AtomCount; ++i) {
        const auto reply = takeX11Reply(xcb_intern_atom_reply, connection_, cookies[i]);
        atoms_[i] = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }
}

// Takes every event the server has sent so far and reads again what they touched.
void X11ScreenWatcher::readEvents() {
    readScheduled_ = false;
    if (!notifier_ || !notifier_->isEnabled())
        return;
    bool reservations = false;
    bool active = false;
    bool compositor = false;
    while (xcb_generic_event_t* event = xcb_poll_for_event(connection_)) {
        const uint8_t type = event->response_type & 0x7F;
        if (type == XCB_PROPERTY_NOTIFY) {
            const auto* notify = reinterpret_cast<const xcb_property_notify_event_t*>(event);
            if (notify->window == root_) {
                reservations |=
                    notify->atom == atoms_[ClientList] || notify->atom == atoms_[WorkArea];
                active |= notify->atom == atoms_[ActiveWindow];
            } else {
                reservations |=
                    (notify->atom == atoms_[StrutPartial] || notify->atom == atoms_[Strut]) &&
                    clients_.contains(notify->window);
                active |= notify->window == activeWindow_ && notify->atom == atoms_[WmState];
            }
        } else if (type == XCB_CONFIGURE_NOTIFY) {
            const auto* notify = reinterpret_cast<const xcb_configure_notify_event_t*>(event);
            reservations |= notify->window == root_;
            active |= notify->window == activeWindow_;
        } else if (hasXfixes_ && type == xfixesFirstEvent_ + XCB_XFIXES_SELECTION_NOTIFY) {
            compositor = true;
        }
        std::free(event);
    }
    if (reservations)
        readReservations();
    if (active)
        readActiveWindow();
    if (compositor)
        readCompositing();
    if (xcb_connection_has_error(connection_))
        notifier_->setEnabled(false);
}

// Waiting for a reply makes xcb read whatever else is on the socket, events included.
// Those then sit in xcb's queue where the socket notifier cannot see them, so every
// read that waited schedules one pass over the queue.
void X11ScreenWatcher::scheduleRead() {
    if (readScheduled_ || !notifier_)
        return;
    readScheduled_ = true;
    QMetaObject::invokeMethod(this, &X11ScreenWatcher::readEvents, Qt::QueuedConnection);
}

QList<quint32> X11ScreenWatcher::values(quint32 window, quint32 property, quint32 type) {
    const auto reply =
        takeX11Reply(xcb_get_property_reply, connection_,
                     xcb_get_property(connection_, 0, window, property, type, 0, kWholeProperty));
    return replyValues(reply.get());
}

void X11ScreenWatcher::readReservations() {
    if (!isConnected())
        return;
    const QList<quint32> clients = values(root_, atoms_[ClientList], XCB_ATOM_WINDOW);
    const auto geometry =
        takeX11Reply(xcb_get_geometry_reply, connection_, xcb_get_geometry(connection_, root_));
    const QSize rootSize = geometry ? QSize(geometry->width, geometry->height) : QSize();
    // The first desktop's work area: window managers give every desktop the same one.
    const QList<quint32> area = values(root_, atoms_[WorkArea], XCB_ATOM_CARDINAL);
    const std::optional<QRect> workArea =
        area.size() >= 4
            ? std::optional(QRect(int(area[0]), int(area[1]), int(area[2]), int(area[3])))
            : std::nullopt;

    // Both forms of every client's reservation are asked for at once; the partial one
    // wins where a client sets both.
    struct Pending {
        xcb_get_property_cookie_t partial;
        xcb_get_property_cookie_t full;
    };
    QList<Pending> pending;
    for (const quint32 client : clients)
        pending << Pending{
            xcb_get_property(connection_, 0, client, atoms_[StrutPartial], XCB_ATOM_CARDINAL, 0,
                             12),
            xcb_get_property(connection_, 0, client, atoms_[Strut], XCB_ATOM_CARDINAL, 0, 4)};
    QList<MonitorWorkArea::Strut> struts;
    for (const Pending& requests : pending) {
        const auto partial = takeX11Reply(xcb_get_property_reply, connection_, requests.partial);
        const auto full = takeX11Reply(xcb_get_property_reply, connection_, requests.full);
        auto strut = MonitorWorkArea::Strut::fromPartial(replyValues(partial.get()));
        if (!strut)
            strut = MonitorWorkArea::Strut::fromFull(replyValues(full.get()), rootSize);
        if (strut && *strut != MonitorWorkArea::Strut{})
            struts << *strut;
    }
    updateEventMasks(QSet<quint32>(clients.cbegin(), clients.cend()), activeWindow_);
    scheduleRead();
    if (struts == struts_ && rootSize == rootSize_ && workArea == workArea_)
        return;
    struts_ = struts;
    rootSize_ = rootSize;
    workArea_ = workArea;
    Q_EMIT reservedAreaChanged();
}

void X11ScreenWatcher::readCompositing() {
    if (!isConnected())
        return;
    const bool running = X11Compositor::hasOwner(connection_, atoms_[CompositorSelection]);
    scheduleRead();
    if (running == compositing_)
        return;
    compositing_ = running;
    Q_EMIT compositingChanged();
}

void X11ScreenWatcher::readActiveWindow() {
    if (!isConnected())
        return;
    const quint32 active = values(root_, atoms_[ActiveWindow], XCB_ATOM_WINDOW).value(0, 0);
    updateEventMasks(clients_, active);
    std::optional<QRect> fullScreen;
    if (active &&
        values(active, atoms_[WmState], XCB_ATOM_ATOM).contains(atoms_[WmStateFullScreen])) {
        // A full-screen window has no frame of the window manager around it.
        const auto geometry = takeX11Reply(xcb_get_geometry_reply, connection_,
                                           xcb_get_geometry(connection_, active));
        const auto origin =
            takeX11Reply(xcb_translate_coordinates_reply, connection_,
                         xcb_translate_coordinates(connection_, active, root_, 0, 0));
        if (geometry && origin)
            fullScreen = QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
    }
    scheduleRead();
    if (fullScreen == fullScreenWindow_)
        return;
    fullScreenWindow_ = fullScreen;
    Q_EMIT fullScreenWindowChanged();
}

void X11ScreenWatcher::updateEventMasks(const QSet<quint32>& clients, quint32 active) {
    const auto mask = [](const QSet<quint32>& listed, quint32 activeWindow, quint32 window) {
        uint32_t events = 0;
        if (listed.contains(window))
            events |= XCB_EVENT_MASK_PROPERTY_CHANGE;
        if (window == activeWindow)
            events |= XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        return events;
    };
    QSet<quint32> windows = clients_ + clients;
    windows << activeWindow_ << active;
    windows.remove(0);
    for (const quint32 window : std::as_const(windows)) {
        const uint32_t events = mask(clients, active, window);
        // A window that is gone answers with an error, which the event loop drops.
        if (events != mask(clients_, activeWindow_, window))
            xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &events);
    }
    clients_ = clients;
    activeWindow_ = active;
    xcb_flush(connection_);
}

} // namespace deskmark
