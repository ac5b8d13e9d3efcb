#pragma once

#include "core/app/HotKeyRegistrar.h"

namespace deskmark {

// Hot keys in a Wayland session, where no client may grab keys: the window manager's
// key bindings run Deskmark's command line, so nothing is held here. A combination
// registers when it names a key of the key table (the user can bind it); scan codes are
// the evdev codes plus 8 that Wayland keymaps use, read by their position on the
// keyboard, as the portable key codes are.
class WaylandHotKeyRegistrar : public HotKeyRegistrar {
    Q_OBJECT
public:
    using HotKeyRegistrar::HotKeyRegistrar;

    bool registerHotKey(quint32 id, quint32 keyCode, quint32 carbonModifiers) override;
    void unregisterHotKey(quint32 id) override;
    std::optional<quint32> keyCodeForScanCode(quint32 nativeScanCode) const override;
    bool boundByWindowManager() const override { return true; }
};

} // namespace deskmark
