#pragma once

#include "core/switcher/InputSourceSwitcher.h"

#include <QDBusConnection>
#include <QString>

namespace deskmark {

// The input method on Linux, through the D-Bus interfaces of the two input-method
// frameworks a desktop runs:
//
// - fcitx5, on the session bus (org.fcitx.Fcitx5 /controller). Its state 2 means an input
//   method such as mozc is active; deactivating falls back to the group's first entry,
//   normally a keyboard layout. Restoring activates again.
// - IBus, on the daemon's own bus, found as IBus clients find it ($IBUS_ADDRESS, else the
//   address file under $XDG_CONFIG_HOME/ibus/bus). A global engine that is not a keyboard
//   layout ("xkb:…") is replaced by the layout engine for the keyboard it types on (a
//   Japanese input method on a "jp" keyboard gives "xkb:jp::jpn"), else by the US layout;
//   restoring sets the remembered engine back.
//
// Every call waits at most a fraction of a second, so a framework that stopped answering
// cannot hold up the panel. Services are never started on demand: where neither framework
// runs, nothing happens and nothing is logged.
class DBusInputSourceSwitcher : public InputSourceSwitcher {
public:
    DBusInputSourceSwitcher() = default;
    ~DBusInputSourceSwitcher() override;
    DBusInputSourceSwitcher(const DBusInputSourceSwitcher&) = delete;
    DBusInputSourceSwitcher& operator=(const DBusInputSourceSwitcher&) = delete;

    void switchToASCIIInput() override;
    void restorePreviousInput() override;
    // The framework that answers: "fcitx5", "IBus", or empty when neither runs.
    QString framework();

    // The address file of the IBus daemon for an X display ("host:number.screen"; empty
    // counts as ":0"): <configHome>/ibus/bus/<machine id>-<host or "unix">-<number>.
    static QString ibusAddressFile(const QString& configHome, const QString& machineId,
                                   const QString& display);

private:
    void switchFcitx();
    void restoreFcitx();
    void switchIBus();
    void restoreIBus();

    // The IBus daemon's bus where one can be found and reached; not connected otherwise.
    QDBusConnection ibusBus();

    bool fcitxDeactivated_ = false;
    QString fcitxInputMethod_; // for the log only
    QString ibusPreviousEngine_;
    QString ibusAddress_; // the address ibusBus() last connected to or tried
};

} // namespace deskmark
