#include "platform/linux/X11HotKeyRegistrar.h"

#include "core/app/SystemLog.h"
#include "core/model/HotKey.h"
#include "platform/linux/X11Screen.h"

#include <QMetaObject>
#include <QSocketNotifier>

#include <X11/keysym.h>
#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>

namespace deskmark {

namespace {

struct KeySym {
    quint32 keyCode; // macOS virtual key code
    xcb_keysym_t keysym;
};

// clang-format off
constexpr std::array<KeySym, 73> keySyms{{
    {0, XK_a},              {11, XK_b},             {8, XK_c},              {2, XK_d},
    {14, XK_e},             {3, XK_f},              {5, XK_g},              {4, XK_h},
    {34, XK_i},             {38, XK_j},             {40, XK_k},             {37, XK_l},
    {46, XK_m},             {45, XK_n},             {31, XK_o},             {35, XK_p},
    {12, XK_q},             {15, XK_r},             {1, XK_s},              {17, XK_t},
    {32, XK_u},             {9, XK_v},              {13, XK_w},             {7, XK_x},
    {16, XK_y},             {6, XK_z},              {29, XK_0},             {18, XK_1},
    {19, XK_2},             {20, XK_3},             {21, XK_4},             {23, XK_5},
    {22, XK_6},             {26, XK_7},             {28, XK_8},             {25, XK_9},
    {49, XK_space},         {36, XK_Return},        {48, XK_Tab},           {53, XK_Escape},
    {51, XK_BackSpace},     {117, XK_Delete},       {115, XK_Home},         {119, XK_End},
    {116, XK_Prior},        {121, XK_Next},         {123, XK_Left},         {124, XK_Right},
    {126, XK_Up},           {125, XK_Down},         {122, XK_F1},           {120, XK_F2},
    {99, XK_F3},            {118, XK_F4},           {96, XK_F5},            {97, XK_F6},
    {98, XK_F7},            {100, XK_F8},           {101, XK_F9},           {109, XK_F10},
    {103, XK_F11},          {111, XK_F12},          {47, XK_period},        {43, XK_comma},
    {27, XK_minus},         {24, XK_equal},         {44, XK_slash},         {42, XK_backslash},
    {41, XK_semicolon},     {39, XK_apostrophe},    {33, XK_bracketleft},   {30, XK_bracketright},
    {50, XK_grave},
}};
// clang-format on

std::optional<xcb_keysym_t> keysymFor(quint32 keyCode) {
    const auto it = std::find_if(keySyms.begin(), keySyms.end(),
                                 [keyCode](const KeySym& k) { return k.keyCode == keyCode; });
    if (it == keySyms.end())
        return std::nullopt;
    return it->keysym;
}

std::optional<quint32> keyCodeForKeysym(xcb_keysym_t keysym) {
    const auto it = std::find_if(keySyms.begin(), keySyms.end(),
                                 [keysym](const KeySym& k) { return k.keysym == keysym; });
    if (it == keySyms.end())
        return std::nullopt;
    return it->keyCode;
}

quint16 xModifiersFor(quint32 carbonModifiers) {
    quint16 modifiers = 0;
    if (carbonModifiers & HotKey::commandModifier)
        modifiers |= XCB_MOD_MASK_4; // Super
    if (carbonModifiers & HotKey::optionModifier)
        modifiers |= XCB_MOD_MASK_1; // Alt
    if (carbonModifiers & HotKey::controlModifier)
        modifiers |= XCB_MOD_MASK_CONTROL;
    if (carbonModifiers & HotKey::shiftModifier)
        modifiers |= XCB_MOD_MASK_SHIFT;
    return modifiers;
}

// The modifier bits a hot key is told apart by; lock bits and the rest are ignored.
constexpr quint16 significantModifiers =
    XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;

} // namespace

X11HotKeyRegistrar::X11HotKeyRegistrar(QObject* parent) : HotKeyRegistrar(parent) {
    int screenNumber = 0;
    connection_ = xcb_connect(nullptr, &screenNumber);
    if (const int error = xcb_connection_has_error(connection_)) {
        systemLog(QStringLiteral("Deskmark: X サーバーに接続できないため、ホットキーは使えません"
                                 "（xcb エラー %1）")
                      .arg(error));
        return;
    }
    root_ = rootWindowOfScreen(connection_, screenNumber);
    keySymbols_ = xcb_key_symbols_alloc(connection_);
    numLockMask_ = readNumLockMask();

    notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_),
                                                  QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, &X11HotKeyRegistrar::readEvents);
    readEventsLater();
}

X11HotKeyRegistrar::~X11HotKeyRegistrar() {
    // Closing the connection releases every grab.
    notifier_.reset();
    if (keySymbols_)
        xcb_key_symbols_free(keySymbols_);
    xcb_disconnect(connection_);
}

bool X11HotKeyRegistrar::registerHotKey(quint32 id, quint32 keyCode, quint32 carbonModifiers) {
    unregisterHotKey(id);
    const std::optional<xcb_keysym_t> keysym = keysymFor(keyCode);
    if (!keysym || !isConnected())
        return false;
    Registration registration{*keysym, xModifiersFor(carbonModifiers), {}};
    for (const Registration& held : std::as_const(registrations_)) {
        // A second grab of our own would silently replace the first one.
        if (held.keysym == registration.keysym && held.modifiers == registration.modifiers)
            return false;
    }
    const bool grabbed = grab(registration);
    readEventsLater();
    if (grabbed)
        registrations_.insert(id, registration);
    return grabbed;
}

void X11HotKeyRegistrar::unregisterHotKey(quint32 id) {
    const auto it = registrations_.find(id);
    if (it == registrations_.end())
        return;
    ungrab(*it);
    registrations_.erase(it);
}

std::optional<quint32> X11HotKeyRegistrar::keyCodeForScanCode(quint32 nativeScanCode) const {
    if (!isConnected() || nativeScanCode > 255)
        return std::nullopt;
    // The key's first level: "b" for B whether Shift is held or not, "1" for "!".
    return keyCodeForKeysym(
        xcb_key_symbols_get_keysym(keySymbols_, xcb_keycode_t(nativeScanCode), 0));
}

bool X11HotKeyRegistrar::isConnected() const {
    return keySymbols_ && !xcb_connection_has_error(connection_);
}

QList<quint8> X11HotKeyRegistrar::keycodesFor(quint32 keysym) const {
    QList<quint8> keycodes;
    xcb_keycode_t* found = xcb_key_symbols_get_keycode(keySymbols_, keysym);
    if (!found)
        return keycodes;
    for (const xcb_keycode_t* keycode = found; *keycode != XCB_NO_SYMBOL; ++keycode) {
        if (!keycodes.contains(*keycode))
            keycodes << *keycode;
    }
    std::free(found);
    return keycodes;
}

quint16 X11HotKeyRegistrar::readNumLockMask() const {
    const QList<quint8> numLockKeys = keycodesFor(XK_Num_Lock);
    if (numLockKeys.isEmpty())
        return 0;
    xcb_generic_error_t* error = nullptr;
    xcb_get_modifier_mapping_reply_t* reply =
        xcb_get_modifier_mapping_reply(connection_, xcb_get_modifier_mapping(connection_), &error);
    std::free(error);
    if (!reply)
        return 0;
    const xcb_keycode_t* keycodes = xcb_get_modifier_mapping_keycodes(reply);
    const int perModifier = reply->keycodes_per_modifier;
    quint16 mask = 0;
    for (int modifier = 0; modifier < 8; ++modifier) {
        for (int i = 0; i < perModifier; ++i) {
            const xcb_keycode_t keycode = keycodes[modifier * perModifier + i];
            if (keycode != XCB_NO_SYMBOL && numLockKeys.contains(keycode))
                mask |= quint16(1u << modifier);
        }
    }
    std::free(reply);
    return mask;
}

bool X11HotKeyRegistrar::grab(Registration& registration) {
    const QList<quint8> keycodes = keycodesFor(registration.keysym);
    if (keycodes.isEmpty())
        return false;
    QList<quint16> lockStates{0, XCB_MOD_MASK_LOCK};
    if (numLockMask_ != 0)
        lockStates << numLockMask_ << quint16(numLockMask_ | XCB_MOD_MASK_LOCK);

    // Send every grab first and collect the answers afterwards: one round trip.
    QList<std::pair<Grab, xcb_void_cookie_t>> requests;
    for (const quint8 keycode : keycodes) {
        for (const quint16 lockState : lockStates) {
            const Grab wanted{keycode, quint16(registration.modifiers | lockState)};
            requests.append({wanted, xcb_grab_key_checked(connection_, 1, root_, wanted.modifiers,
                                                          wanted.keycode, XCB_GRAB_MODE_ASYNC,
                                                          XCB_GRAB_MODE_ASYNC)});
        }
    }
    bool complete = true;
    for (const auto& [wanted, cookie] : requests) {
        if (xcb_generic_error_t* error = xcb_request_check(connection_, cookie)) {
            // BadAccess: another client holds this variant.
            complete = false;
            std::free(error);
        } else {
            registration.grabs << wanted;
        }
    }
    if (!complete)
        ungrab(registration);
    return complete;
}

void X11HotKeyRegistrar::ungrab(Registration& registration) {
    for (const Grab& held : std::as_const(registration.grabs))
        xcb_ungrab_key(connection_, held.keycode, root_, held.modifiers);
    registration.grabs.clear();
    xcb_flush(connection_);
}

void X11HotKeyRegistrar::grabAgain() {
    for (Registration& registration : registrations_)
        ungrab(registration);
    numLockMask_ = readNumLockMask();
    for (Registration& registration : registrations_) {
        if (!grab(registration))
            systemLog(QStringLiteral("Deskmark: キー配置の変更後にホットキーを登録し直せません"));
    }
}

void X11HotKeyRegistrar::readEvents() {
    bool mappingChanged = false;
    while (xcb_generic_event_t* event = xcb_poll_for_event(connection_)) {
        switch (event->response_type & 0x7f) {
        case XCB_KEY_PRESS: {
            const auto* press = reinterpret_cast<xcb_key_press_event_t*>(event);
            keyPressed(press->detail, press->state);
            break;
        }
        case XCB_MAPPING_NOTIFY: {
            auto* mapping = reinterpret_cast<xcb_mapping_notify_event_t*>(event);
            xcb_refresh_keyboard_mapping(keySymbols_, mapping);
            if (mapping->request == XCB_MAPPING_KEYBOARD ||
                mapping->request == XCB_MAPPING_MODIFIER)
                mappingChanged = true;
            break;
        }
        default: // errors of ungrab requests, key releases of our grabs
            break;
        }
        std::free(event);
    }
    if (xcb_connection_has_error(connection_)) {
        if (notifier_->isEnabled()) {
            notifier_->setEnabled(false);
            systemLog(
                QStringLiteral("Deskmark: X サーバーとの接続が切れたため、ホットキーは使えません"));
        }
        return;
    }
    if (mappingChanged) {
        grabAgain();
        readEventsLater();
    }
}

void X11HotKeyRegistrar::readEventsLater() {
    // Round trips may leave events in xcb's queue that the socket will not announce.
    QMetaObject::invokeMethod(this, &X11HotKeyRegistrar::readEvents, Qt::QueuedConnection);
}

void X11HotKeyRegistrar::keyPressed(quint8 keycode, quint16 state) {
    const quint16 modifiers = state & significantModifiers;
    for (auto it = registrations_.constBegin(); it != registrations_.constEnd(); ++it) {
        const QList<Grab>& grabs = it->grabs;
        const bool matches = it->modifiers == modifiers &&
                             std::any_of(grabs.begin(), grabs.end(), [keycode](const Grab& held) {
                                 return held.keycode == keycode;
                             });
        if (matches) {
            Q_EMIT pressed(it.key());
            return;
        }
    }
}

} // namespace deskmark
