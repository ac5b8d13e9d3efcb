#pragma once

#include "core/app/HotKeyRegistrar.h"

#include <QHash>
#include <QList>

#include <memory>
#include <optional>

class QSocketNotifier;
struct xcb_connection_t;
struct _XCBKeySymbols;

namespace deskmark {

// Hot keys on X11: passive key grabs on the root window, over a connection of their
// own whose events are read when its socket becomes readable.
//
// A combination is grabbed once for every state of NumLock and CapsLock, so the hot
// key works whichever of them is on; another client holding any of those grabs makes
// the whole combination count as in use. Carbon modifiers map to Super (command), Alt
// (option), Control and Shift. When the keyboard or modifier mapping changes, every
// hot key is grabbed again with the new key codes.
class X11HotKeyRegistrar : public HotKeyRegistrar {
    Q_OBJECT
public:
    // Connects to the display named by $DISPLAY. Without a connection every
    // registration fails; one line is logged.
    explicit X11HotKeyRegistrar(QObject* parent = nullptr);
    ~X11HotKeyRegistrar() override;

    bool registerHotKey(quint32 id, quint32 keyCode, quint32 carbonModifiers) override;
    void unregisterHotKey(quint32 id) override;
    std::optional<quint32> keyCodeForScanCode(quint32 nativeScanCode) const override;
    bool boundByWindowManager() const override { return false; }

private:
    struct Grab {
        quint8 keycode;
        quint16 modifiers;
    };
    struct Registration {
        quint32 keysym;
        quint16 modifiers; // X modifier mask, without lock bits
        QList<Grab> grabs; // empty while the key cannot be grabbed after a mapping change
    };

    bool isConnected() const;
    QList<quint8> keycodesFor(quint32 keysym) const;
    quint16 readNumLockMask() const;
    bool grab(Registration& registration);
    void ungrab(Registration& registration);
    void grabAgain();
    void readEvents();
    void readEventsLater();
    void keyPressed(quint8 keycode, quint16 state);

    xcb_connection_t* connection_ = nullptr;
    quint32 root_ = 0;
    _XCBKeySymbols* keySymbols_ = nullptr;
    quint16 numLockMask_ = 0;
    std::unique_ptr<QSocketNotifier> notifier_;
    QHash<quint32, Registration> registrations_;
};

} // namespace deskmark
