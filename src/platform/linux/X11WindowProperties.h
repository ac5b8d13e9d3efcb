#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QRect>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

struct xcb_connection_t;

namespace deskmark {

// A plain connection to the X server named by $DISPLAY for reading the properties of
// other programs' windows and asking the window manager to act on them. Every read waits
// for its answer; nothing is cached but the atoms.
class X11WindowProperties {
public:
    X11WindowProperties();
    ~X11WindowProperties();
    X11WindowProperties(const X11WindowProperties&) = delete;
    X11WindowProperties& operator=(const X11WindowProperties&) = delete;

    bool isConnected() const;
    quint32 root() const { return root_; }

    // The managed windows in the order they were mapped (_NET_CLIENT_LIST).
    QList<quint32> clientList();
    std::optional<quint32> activeWindow();

    // WM_CLASS: the instance name and the class name; empty when unset.
    QStringList windowClass(quint32 window);
    // A UTF8_STRING or STRING property, e.g. "_NET_STARTUP_ID", "_NET_WM_NAME".
    QString text(quint32 window, const char* property);
    // The first value of a CARDINAL or WINDOW property, e.g. "_NET_WM_PID".
    std::optional<quint32> number(quint32 window, const char* property);
    // The names of the atoms in an ATOM list property such as "_NET_WM_STATE".
    QStringList atomNames(quint32 window, const char* property);
    // The window's frame in root coordinates: its area with the window manager's
    // decorations (_NET_FRAME_EXTENTS) around it.
    std::optional<QRect> frame(quint32 window);

    // A 32-bit client message about window to the root window, as EWMH clients send.
    void sendMessage(quint32 window, const char* type, const std::array<quint32, 5>& data);
    quint32 atom(const char* name);

private:
    QByteArray property(quint32 window, quint32 property, quint32 type, quint8* format = nullptr);

    xcb_connection_t* connection_ = nullptr;
    quint32 root_ = 0;
    QHash<QByteArray, quint32> atoms_;
};

} // namespace deskmark
