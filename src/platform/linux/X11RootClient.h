#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QStringList>

#include <array>
#include <optional>

struct xcb_connection_t;
class QSocketNotifier;

namespace deskmark {

// One RandR monitor as the X server lists it.
struct RandrMonitor {
    QString name;
    bool primary = false;
    QStringList outputs; // output (connector) names; empty for a monitor made without any
    QByteArray edid;     // the first output's EDID property; empty when it has none
};

// Deskmark's own connection to the X server named by $DISPLAY, independent of the one
// Qt's platform plugin keeps. It reads the root window's EWMH properties and the RandR
// monitors, sends client messages to the root window, and reports changes of either
// as they arrive on the socket: nothing here polls.
class X11RootClient : public QObject {
    Q_OBJECT
public:
    // The root-window properties Deskmark reads.
    enum class Property {
        SupportingWmCheck,
        NumberOfDesktops,
        CurrentDesktop,
        DesktopNames,
        I3SocketPath // where i3 listens for IPC, a UTF-8 string
    };

    explicit X11RootClient(QObject* parent = nullptr);
    ~X11RootClient() override;

    // False when no X server answered or the connection has broken since.
    bool isConnected() const;
    // Whether the server offers RandR monitors (RandR 1.5).
    bool hasMonitors() const { return hasMonitors_; }

    // True when the root window names a window-manager check window that names itself,
    // which is how an EWMH window manager shows that it is running.
    bool hasWindowManager();
    std::optional<quint32> cardinal(Property property);
    // A list of UTF-8 strings, each ended by a NUL byte; empty when unset.
    QStringList utf8List(Property property);
    // Replaces the property with the strings, each ended by a NUL byte. False when it
    // could not be sent.
    bool setUtf8List(Property property, const QStringList& strings);
    QList<RandrMonitor> monitors();

    // Sends a 32-bit client message of type `property` to the root window, the way EWMH
    // clients ask the window manager for something. False when it could not be sent.
    bool sendMessage(Property property, const std::array<quint32, 5>& data);

Q_SIGNALS:
    // One of the desktop properties of the root window changed.
    void desktopsChanged();
    // The screen was reconfigured: monitors may have come, gone, moved or changed.
    void monitorsChanged();
    // The connection broke; every read answers nothing from now on.
    void disconnected();

private:
    enum class Atom {
        SupportingWmCheck,
        NumberOfDesktops,
        CurrentDesktop,
        DesktopNames,
        I3SocketPath,
        Utf8String,
        Edid,
        Count
    };

    quint32 atom(Atom atom) const { return atoms_[static_cast<int>(atom)]; }
    quint32 atom(Property property) const { return atom(static_cast<Atom>(property)); }
    void internAtoms();
    void watchRoot();
    void readEvents();
    void scheduleRead();

    xcb_connection_t* connection_ = nullptr;
    quint32 root_ = 0;
    std::array<quint32, static_cast<int>(Atom::Count)> atoms_{};
    bool hasMonitors_ = false;
    quint8 randrFirstEvent_ = 0;
    QSocketNotifier* notifier_ = nullptr;
    bool readScheduled_ = false;
};

} // namespace deskmark
