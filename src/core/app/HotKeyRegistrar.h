#pragma once

#include <QObject>
#include <QtGlobal>

#include <optional>

namespace deskmark {

// System-wide hot keys, as the platform offers them.
//
// A hot key is named by a macOS virtual key code and a set of Carbon modifier bits
// (HotKey), the portable form in which the settings keep it; each platform translates
// both to its own keys. The caller chooses the ids; pressed(id) reports a press of the
// combination registered under that id.
class HotKeyRegistrar : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    ~HotKeyRegistrar() override = default;

    // Registers the combination under id, replacing what id had before. Returns true
    // when the combination is now held for this program; false when another program
    // or another id already holds it, or when the platform has no key for keyCode.
    // After false the id has no registration.
    virtual bool registerHotKey(quint32 id, quint32 keyCode, quint32 carbonModifiers) = 0;
    // Releases id's combination; an id without registration is ignored.
    virtual void unregisterHotKey(quint32 id) = 0;
    // The key code of the key that produced a key event with this native scan code
    // (an X keycode on X11), whatever the modifiers held; none for a key that cannot be
    // a hot key.
    virtual std::optional<quint32> keyCodeForScanCode(quint32 nativeScanCode) const = 0;
    // True where no program may take keys for itself (Wayland): the window manager's own
    // key bindings run Deskmark's command line instead. A registration then holds
    // nothing and only says that the combination names a key the user can bind, and
    // pressed() is never emitted.
    virtual bool boundByWindowManager() const = 0;

Q_SIGNALS:
    void pressed(quint32 id);
};

} // namespace deskmark
