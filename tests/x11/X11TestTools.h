#pragma once

#include <QByteArray>
#include <QImage>
#include <QProcess>
#include <QStringList>
#include <QTest>
#include <QtGlobal>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <cstdlib>

// Another program on the same display.
class OtherXClient {
public:
    OtherXClient() : connection_(xcb_connect(nullptr, nullptr)) {
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
        symbols_ = xcb_key_symbols_alloc(connection_);
    }
    ~OtherXClient() {
        xcb_key_symbols_free(symbols_);
        xcb_disconnect(connection_);
    }
    OtherXClient(const OtherXClient&) = delete;
    OtherXClient& operator=(const OtherXClient&) = delete;

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
    // Whether no client holds the whole keyboard: tried by grabbing it for a moment.
    bool keyboardIsFree() {
        xcb_grab_keyboard_reply_t* reply =
            xcb_grab_keyboard_reply(connection_,
                                    xcb_grab_keyboard(connection_, 0, root_, XCB_CURRENT_TIME,
                                                      XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                    nullptr);
        const bool free = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
        std::free(reply);
        if (free)
            xcb_ungrab_keyboard(connection_, XCB_CURRENT_TIME);
        xcb_flush(connection_);
        return free;
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

// Runs a program of the X session's tools, failing the test when it fails.
inline void runTool(const QString& program, const QStringList& arguments) {
    QCOMPARE(QProcess::execute(program, arguments), 0);
}

// The whole X screen (every monitor) as the X server shows it.
inline QImage screenshot() {
    QProcess import;
    import.start(QStringLiteral("import"), {QStringLiteral("-window"), QStringLiteral("root"),
                                            QStringLiteral("png:-")});
    if (!import.waitForFinished(10000))
        return {};
    return QImage::fromData(import.readAllStandardOutput(), "PNG")
        .convertToFormat(QImage::Format_RGB32);
}

// Types keys as xdotool names them ("super+alt+b") through the XTEST extension.
inline void pressKeys(const QString& keys) {
    runTool(QStringLiteral("xdotool"), {QStringLiteral("key"), keys});
}

// An EDID base block as a monitor sends it. `manufacturer` is the three-letter id,
// `serialText` goes into a display-serial descriptor when not empty.
inline QByteArray edid(const char* manufacturer, quint16 product, quint32 serial,
                       const QByteArray& serialText = {}) {
    QByteArray data(128, '\0');
    data.replace(0, 8, QByteArray("\x00\xFF\xFF\xFF\xFF\xFF\xFF\x00", 8));
    const quint16 packed = quint16((manufacturer[0] - 'A' + 1) << 10 |
                                   (manufacturer[1] - 'A' + 1) << 5 | (manufacturer[2] - 'A' + 1));
    data[8] = char(packed >> 8);
    data[9] = char(packed & 0xFF);
    data[10] = char(product & 0xFF);
    data[11] = char(product >> 8);
    for (int i = 0; i < 4; ++i)
        data[12 + i] = char((serial >> (8 * i)) & 0xFF);
    // First descriptor: a detailed timing (non-zero pixel clock), second: the serial.
    data[54] = 0x01;
    data[55] = 0x1D;
    if (!serialText.isEmpty()) {
        data[72 + 3] = char(0xFF);
        QByteArray text = (serialText + '\n').leftJustified(13, ' ');
        data.replace(72 + 5, 13, text);
    }
    return data;
}
