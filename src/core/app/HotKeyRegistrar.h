#pragma once

#include <QObject>
#include <QtGlobal>

namespace deskmark {

// System-wide hot keys, as the platform offers them.
//
// A hot key is named by a macOS virtual key code and a set of Carbon modifier bits,
// the portable form in which the settings keep it; each platform translates both to
// its own keys. The caller chooses the ids; pressed(id) reports a press of the
// combination registered under that id.
class HotKeyRegistrar : public QObject {
    Q_OBJECT
public:
    // Carbon modifier bits.
    static constexpr quint32 commandModifier = 0x100;
    static constexpr quint32 shiftModifier = 0x200;
    static constexpr quint32 optionModifier = 0x800;
    static constexpr quint32 controlModifier = 0x1000;

    using QObject::QObject;
    ~HotKeyRegistrar() override = default;

    // Registers the combination under id, replacing what id had before. Returns true
    // when the combination is now held for this program; false when another program
    // or another id already holds it, or when the platform has no key for keyCode.
    // After false the id has no registration.
    virtual bool registerHotKey(quint32 id, quint32 keyCode, quint32 carbonModifiers) = 0;
    // Releases id's combination; an id without registration is ignored.
    virtual void unregisterHotKey(quint32 id) = 0;

Q_SIGNALS:
    void pressed(quint32 id);
};

} // namespace deskmark
