#include "platform/linux/X11HotKeyRegistrar.h"
#include "core/app/LinuxShortcutText.h"
#include "core/model/HotKey.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <X11/keysym.h>
#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <cstdlib>

using namespace deskmark;

namespace {
constexpr quint32 command = HotKey::commandModifier;
constexpr quint32 shift = HotKey::shiftModifier;
constexpr quint32 option = HotKey::optionModifier;
constexpr quint32 control = HotKey::controlModifier;
constexpr quint32 keyB = 11;
constexpr quint32 keyF5 = 96;
constexpr quint16 altSuper = XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
constexpr quint16 numLock = XCB_MOD_MASK_2; // where Xvfb's keymap puts Num_Lock
constexpr int pressTimeout = 3000;
constexpr int silenceTimeout = 400;

// Another program on the same display.
class OtherClient {
public:
    OtherClient() : connection_(xcb_connect(nullptr, nullptr)) {
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
        symbols_ = xcb_key_symbols_alloc(connection_);
    }
    ~OtherClient() {
        xcb_key_symbols_free(symbols_);
        xcb_disconnect(connection_);
    }
    OtherClient(const OtherClient&) = delete;
    OtherClient& operator=(const OtherClient&) = delete;

    xcb_keycode_t keycodeOf(xcb_keysym_t keysym) {
        xcb_keycode_t* keycodes = xcb_key_symbols_get_keycode(symbols_, keysym);
        const xcb_keycode_t first = keycodes ? keycodes[0] : 0;
        std::free(keycodes);
        return first;
    }
    bool grab(xcb_keycode_t keycode, quint16 modifiers) {
        xcb_generic_error_t* error = xcb_request_check(
            connection_, xcb_grab_key_checked(connection_, 1, root_, modifiers, keycode,
                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        const bool grabbed = error == nullptr;
        std::free(error);
        return grabbed;
    }
    // The modifier and lock state of the keyboard, as the server sees it.
    quint16 keyboardState() {
        xcb_query_pointer_reply_t* reply =
            xcb_query_pointer_reply(connection_, xcb_query_pointer(connection_, root_), nullptr);
        const quint16 state = reply ? reply->mask : 0;
        std::free(reply);
        return state;
    }

private:
    xcb_connection_t* connection_;
    xcb_window_t root_ = XCB_WINDOW_NONE;
    xcb_key_symbols_t* symbols_ = nullptr;
};

void run(const QString& program, const QStringList& arguments) {
    QCOMPARE(QProcess::execute(program, arguments), 0);
}

void press(const QString& keys) {
    run(QStringLiteral("xdotool"), {QStringLiteral("key"), keys});
}

quint32 firstId(QSignalSpy& spy) {
    return spy.takeFirst().at(0).toUInt();
}
} // namespace

class X11HotKeyRegistrarTest : public QObject {
    Q_OBJECT
    // Keeps the display open between tests: an X server resets whenever its last client
    // leaves, and refuses connections while it does.
    OtherClient session_;

private Q_SLOTS:
    void pressFiresWhateverTheLocks() {
        X11HotKeyRegistrar registrar;
        QSignalSpy spy(&registrar, &HotKeyRegistrar::pressed);
        QVERIFY(registrar.registerHotKey(7, keyB, option | command));
        OtherClient other;

        press(QStringLiteral("super+alt+b"));
        QVERIFY(spy.wait(pressTimeout));
        QCOMPARE(firstId(spy), 7u);

        press(QStringLiteral("Num_Lock"));
        QVERIFY(other.keyboardState() & numLock);
        press(QStringLiteral("super+alt+b"));
        QVERIFY(spy.wait(pressTimeout));
        QCOMPARE(firstId(spy), 7u);

        press(QStringLiteral("Caps_Lock"));
        QVERIFY(other.keyboardState() & XCB_MOD_MASK_LOCK);
        press(QStringLiteral("super+alt+b"));
        const bool firedWithBoth = spy.wait(pressTimeout);
        press(QStringLiteral("Num_Lock"));
        press(QStringLiteral("Caps_Lock"));
        QVERIFY(firedWithBoth);
        QCOMPARE(firstId(spy), 7u);
        QCOMPARE(other.keyboardState() & (numLock | XCB_MOD_MASK_LOCK), 0);
    }

    void combinationHeldByAnotherClientIsInUse_data() {
        QTest::addColumn<quint16>("heldLocks");
        QTest::newRow("no lock") << quint16(0);
        QTest::newRow("CapsLock") << quint16(XCB_MOD_MASK_LOCK);
        QTest::newRow("NumLock") << numLock;
        QTest::newRow("both") << quint16(numLock | XCB_MOD_MASK_LOCK);
    }
    // Held in any one lock state, the combination is in use, and no variant stays grabbed.
    void combinationHeldByAnotherClientIsInUse() {
        QFETCH(quint16, heldLocks);
        X11HotKeyRegistrar registrar;
        {
            OtherClient holder;
            QVERIFY(holder.grab(holder.keycodeOf(XK_b), altSuper | heldLocks));
            QVERIFY(!registrar.registerHotKey(1, keyB, option | command));
            QVERIFY(registrar.registerHotKey(2, keyB, control | command));
        }
        OtherClient other;
        const xcb_keycode_t b = other.keycodeOf(XK_b);
        QVERIFY(other.grab(b, altSuper | (quint16(numLock | XCB_MOD_MASK_LOCK) & ~heldLocks)));
        QVERIFY(other.grab(b, altSuper | (heldLocks == 0 ? numLock : 0)));
    }

    void unregisterStopsPressesAndReleasesEveryVariant() {
        X11HotKeyRegistrar registrar;
        QSignalSpy spy(&registrar, &HotKeyRegistrar::pressed);
        QVERIFY(registrar.registerHotKey(1, keyB, option | command));
        registrar.unregisterHotKey(1);
        registrar.unregisterHotKey(1); // twice is harmless
        press(QStringLiteral("super+alt+b"));
        QVERIFY(!spy.wait(silenceTimeout));

        OtherClient other;
        const xcb_keycode_t b = other.keycodeOf(XK_b);
        const quint16 capsLock = XCB_MOD_MASK_LOCK;
        for (const quint16 locks : {quint16(0), capsLock, numLock, quint16(numLock | capsLock)})
            QVERIFY2(other.grab(b, altSuper | locks), qPrintable(QString::number(locks)));
    }

    void idsAreIndependent() {
        X11HotKeyRegistrar registrar;
        QSignalSpy spy(&registrar, &HotKeyRegistrar::pressed);
        QVERIFY(registrar.registerHotKey(1, keyB, option | command));
        QVERIFY(registrar.registerHotKey(2, keyF5, control | shift));
        QVERIFY(!registrar.registerHotKey(3, keyB, option | command)); // our own id 1 holds it

        press(QStringLiteral("ctrl+shift+F5"));
        QVERIFY(spy.wait(pressTimeout));
        QCOMPARE(firstId(spy), 2u);

        registrar.unregisterHotKey(2);
        press(QStringLiteral("ctrl+shift+F5"));
        QVERIFY(!spy.wait(silenceTimeout));
        press(QStringLiteral("super+alt+b"));
        QVERIFY(spy.wait(pressTimeout));
        QCOMPARE(firstId(spy), 1u);
        QCOMPARE(spy.count(), 0);
    }

    void reRegisteringAnIdReleasesItsOldKey() {
        X11HotKeyRegistrar registrar;
        QVERIFY(registrar.registerHotKey(1, keyB, option | command));
        QVERIFY(registrar.registerHotKey(1, keyF5, control | shift));
        OtherClient other;
        QVERIFY(other.grab(other.keycodeOf(XK_b), altSuper));
        QVERIFY(!other.grab(other.keycodeOf(XK_F5), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT));
    }

    // Every key with a Linux name is one the X11 registrar can grab, and only those.
    void namedKeysAreExactlyTheGrabbableKeys() {
        X11HotKeyRegistrar registrar;
        const quint32 all = command | option | control | shift;
        for (quint32 keyCode = 0; keyCode < 256; ++keyCode) {
            const bool named = linuxShortcutText(keyCode, 0) != QLatin1String("?");
            QCOMPARE(registrar.registerHotKey(keyCode, keyCode, all), named);
        }
    }

    void keyboardMappingChangeMovesTheGrab() {
        X11HotKeyRegistrar registrar;
        QSignalSpy spy(&registrar, &HotKeyRegistrar::pressed);
        QVERIFY(registrar.registerHotKey(1, keyB, option | command));
        xcb_keycode_t b = 0;
        xcb_keycode_t x = 0;
        {
            OtherClient other;
            b = other.keycodeOf(XK_b);
            x = other.keycodeOf(XK_x);
        }
        const auto swapBAndX = [&](bool swapped) {
            const auto line = [](xcb_keycode_t keycode, const char* keysyms) {
                return QStringLiteral("keycode %1 = %2").arg(keycode).arg(QLatin1String(keysyms));
            };
            run(QStringLiteral("xmodmap"),
                {QStringLiteral("-e"), line(b, swapped ? "x X" : "b B"), QStringLiteral("-e"),
                 line(x, swapped ? "b B" : "x X")});
            QTest::qWait(300); // the registrar reads the mapping change
        };

        swapBAndX(true);
        press(QStringLiteral("super+alt+b")); // now on the key that used to be x
        const bool fired = spy.wait(pressTimeout);
        bool oldKeyReleased = false;
        {
            OtherClient other;
            oldKeyReleased = other.grab(b, altSuper);
        }
        swapBAndX(false);
        QVERIFY(fired);
        QCOMPARE(firstId(spy), 1u);
        QVERIFY(oldKeyReleased);
    }
};

QTEST_GUILESS_MAIN(X11HotKeyRegistrarTest)
#include "X11HotKeyRegistrarTest.moc"
