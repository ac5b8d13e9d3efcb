#pragma once

#include "core/spaces/DesktopNamer.h"
#include "core/spaces/WindowServer.h"
#include "core/switcher/SpaceRequester.h"

#include <QList>
#include <QStringList>

namespace deskmark {

class X11RootClient;

// The Space layout of an X11 session with an EWMH window manager. Its desktops span
// all monitors, so every RandR monitor is a display listing the same Spaces,
// "desktop-1" to "desktop-N", with the current desktop as its current Space.
//
// The desktop properties are read afresh on every question; the monitors and their
// UUIDs are kept until the X server reports a RandR change. activeSpaceChanged() is
// emitted once per event-loop turn in which the current desktop, the number of
// desktops, their names, the window manager or the monitors changed.
//
// Without an X display or without an EWMH window manager there is no layout: the
// answers are empty and the reason is logged once.
class X11WindowServer : public WindowServer, public SpaceRequester, public DesktopNamer {
    Q_OBJECT
public:
    explicit X11WindowServer(QObject* parent = nullptr);

    QVariant managedDisplaySpaces() const override;
    std::optional<QString> mainDisplayUUID() const override;
    // Qt names an X11 screen after its RandR monitor; a build that names screens after
    // outputs is matched through the monitor's output names.
    std::optional<QString> displayUUIDForScreen(const QString& screenName) const override;

    // The desktop names the window manager publishes, in desktop order. The list may be
    // shorter or longer than the number of desktops.
    QStringList desktopNames() const override;
    // Publishes the names in _NET_DESKTOP_NAMES, where the window manager reads them.
    bool setDesktopNames(const QStringList& names) override;
    // Asks the window manager to show the desktop at `index` (0-based). False when there
    // is no EWMH window manager, the index is not a desktop or the request failed.
    bool requestDesktop(int index);
    // Every monitor shows the same desktops: the display does not matter.
    bool requestSpace(const QString& displayUUID, int index) override;

private:
    struct Display {
        QString name;
        QStringList outputs;
        bool primary = false;
        QString uuid;
    };
    struct Desktops {
        qlonglong count = 0;
        std::optional<qlonglong> current;
    };

    std::optional<Desktops> desktops() const;
    const QList<Display>& displays() const;
    void reloadDisplays() const;
    void scheduleAnnouncement();

    X11RootClient* client_;
    mutable std::optional<QList<Display>> displays_; // nothing: to be read again
    mutable bool reportedNoWindowManager_ = false;
    mutable bool reportedNoMonitors_ = false;
    bool announcementPending_ = false;
};

} // namespace deskmark
