#pragma once

#include "core/overlay/MonitorWorkArea.h"

#include <QList>
#include <QObject>
#include <QRect>
#include <QSet>
#include <QSize>

#include <array>
#include <optional>

struct xcb_connection_t;
class QSocketNotifier;

namespace deskmark {

// What the X session says about the screen around Deskmark's labels, followed as it
// changes, on a connection of its own: the space panels and docks reserve (their struts,
// the root window's size and work area), whether a compositing manager runs, and the
// active window while it is full screen. Every value is kept up to date from events:
// reading one asks the server nothing.
class X11ScreenWatcher : public QObject {
    Q_OBJECT
public:
    explicit X11ScreenWatcher(QObject* parent = nullptr);
    ~X11ScreenWatcher() override;

    bool isConnected() const;
    // The part of a monitor (its frame in root pixels) that panels and docks leave to
    // ordinary windows; none without a connection.
    std::optional<QRect> availableArea(const QRect& monitor) const;
    bool compositing() const { return compositing_; }
    // The active window's area in root pixels while it is full screen.
    const std::optional<QRect>& fullScreenWindow() const { return fullScreenWindow_; }

Q_SIGNALS:
    // A panel or dock came, went or changed what it reserves, or the screen's size or
    // work area changed.
    void reservedAreaChanged();
    // A compositing manager started or stopped.
    void compositingChanged();
    // Another window became active, or the active one entered, left or moved while full
    // screen.
    void fullScreenWindowChanged();

private:
    enum Atom {
        ClientList,
        WorkArea,
        ActiveWindow,
        StrutPartial,
        Strut,
        WmState,
        WmStateFullScreen,
        CompositorSelection,
        AtomCount
    };

    void internAtoms(int screenNumber);
    void readEvents();
    void scheduleRead();
    // Each reads its facts afresh and reports when they changed.
    void readReservations();
    void readCompositing();
    void readActiveWindow();
    // The 32-bit values of a window's property; empty when unset.
    QList<quint32> values(quint32 window, quint32 property, quint32 type);
    // Selects on every window the events it is watched for: property changes of the
    // clients (their struts), and moves of the active window too.
    void updateEventMasks(const QSet<quint32>& clients, quint32 active);

    xcb_connection_t* connection_ = nullptr;
    quint32 root_ = 0;
    std::array<quint32, AtomCount> atoms_{};
    quint8 xfixesFirstEvent_ = 0;
    bool hasXfixes_ = false;
    QSocketNotifier* notifier_ = nullptr;
    bool readScheduled_ = false;

    QSet<quint32> clients_;
    quint32 activeWindow_ = 0;
    QList<MonitorWorkArea::Strut> struts_;
    QSize rootSize_;
    std::optional<QRect> workArea_;
    bool compositing_ = false;
    std::optional<QRect> fullScreenWindow_;
};

} // namespace deskmark
