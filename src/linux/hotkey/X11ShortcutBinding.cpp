#include "linux/hotkey/X11ShortcutBinding.h"

#include "base/Log.h"
#include "linux/hotkey/KeyPositions.h"
#include "linux/x11/Xcb.h"

#include <X11/keysym.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <set>

namespace quillo {

namespace {

/// The bit of the first modifier that one of the keysyms has a key for; 0 if there is none.
std::uint16_t modifierWith(std::initializer_list<xcb_keysym_t> wanted,
                           const xcb_get_modifier_mapping_reply_t* modifiers,
                           const xcb_get_keyboard_mapping_reply_t* keyboard, xcb_keycode_t firstMapped) {
    const xcb_keycode_t* const keycodes = xcb_get_modifier_mapping_keycodes(modifiers);
    const int keycodeCount = xcb_get_modifier_mapping_keycodes_length(modifiers);
    const xcb_keysym_t* const keysyms = xcb_get_keyboard_mapping_keysyms(keyboard);
    const int keysymCount = xcb_get_keyboard_mapping_keysyms_length(keyboard);
    for (int place = 0; place < keycodeCount; ++place) {
        const int first = (keycodes[place] - firstMapped) * keyboard->keysyms_per_keycode;
        if (keycodes[place] < firstMapped || first + keyboard->keysyms_per_keycode > keysymCount)
            continue;
        const auto found = std::find_first_of(
            keysyms + first, keysyms + first + keyboard->keysyms_per_keycode, wanted.begin(), wanted.end());
        if (found != keysyms + first + keyboard->keysyms_per_keycode)
            return static_cast<std::uint16_t>(1U << (place / modifiers->keycodes_per_modifier));
    }
    return 0;
}

BindingOutcome unavailable(const char* reason) {
    return {HotKeyStatus::unavailable, reason};
}

} // namespace

void X11ShortcutBinding::Disconnect::operator()(xcb_connection_t* connection) const {
    xcb_disconnect(connection);
}

X11ShortcutBinding::X11ShortcutBinding() = default;

X11ShortcutBinding::~X11ShortcutBinding() = default;

void X11ShortcutBinding::bind(const HotKeyConfig& config, std::function<void(const BindingOutcome&)> answer) {
    release();
    wanted_ = config;
    const BindingOutcome outcome = grab();
    if (outcome.status != HotKeyStatus::noError)
        wanted_.reset();
    answer(outcome);
}

void X11ShortcutBinding::release() {
    wanted_.reset();
    ungrab();
}

bool X11ShortcutBinding::connect() {
    if (connection_ && xcb_connection_has_error(connection_.get()) == 0)
        return true;
    disconnect();
    int screenNumber = 0;
    connection_.reset(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(connection_.get()) != 0)
        return false;
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection_.get()));
    for (; screenNumber > 0 && screen.rem > 1; --screenNumber)
        xcb_screen_next(&screen);
    root_ = screen.data->root;
    readable_ =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_.get()), QSocketNotifier::Read);
    QObject::connect(readable_.get(), &QSocketNotifier::activated, [this] { read(); });
    return true;
}

void X11ShortcutBinding::disconnect() {
    // It may be the notifier itself that calls.
    if (readable_) {
        readable_->setEnabled(false);
        readable_.release()->deleteLater();
    }
    connection_.reset();
    grab_.reset();
}

BindingOutcome X11ShortcutBinding::grab() {
    const auto position = keyPosition(wanted_->keyCode);
    if (!position)
        return unavailable("its key is on no keyboard");
    if (!connect())
        return unavailable("the X server cannot be reached");
    const auto modifiers = readModifiers();
    if (!modifiers)
        return unavailable("the X server is gone");
    modifiers_ = *modifiers;

    std::uint16_t mask = 0;
    if (wanted_->modifiers & hot_key_modifiers::control)
        mask |= XCB_MOD_MASK_CONTROL;
    if (wanted_->modifiers & hot_key_modifiers::shift)
        mask |= XCB_MOD_MASK_SHIFT;
    if (wanted_->modifiers & hot_key_modifiers::option) {
        if (modifiers->alt == 0)
            return unavailable("the keyboard has no Alt key");
        mask |= modifiers->alt;
    }
    if (wanted_->modifiers & hot_key_modifiers::command) {
        if (modifiers->super == 0)
            return unavailable("the keyboard has no Super key");
        mask |= modifiers->super;
    }
    if (mask == 0)
        return unavailable("without a modifier its key could not be typed any more");

    const std::uint16_t locks = XCB_MOD_MASK_LOCK | modifiers->numLock;
    const std::set<std::uint16_t> combinations = {mask, static_cast<std::uint16_t>(mask | XCB_MOD_MASK_LOCK),
                                                  static_cast<std::uint16_t>(mask | modifiers->numLock),
                                                  static_cast<std::uint16_t>(mask | locks)};
    grab_ = Grab{static_cast<std::uint8_t>(position->evdevCode + firstScanCode),
                 {combinations.begin(), combinations.end()}};
    auto* const connection = connection_.get();
    std::vector<xcb_void_cookie_t> asked;
    for (const std::uint16_t combination : grab_->modifiers)
        asked.push_back(xcb_grab_key_checked(connection, 0, root_, combination, grab_->keycode,
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    std::uint8_t failure = 0;
    for (const xcb_void_cookie_t cookie : asked) {
        if (const auto error = owned(xcb_request_check(connection, cookie)))
            failure = error->error_code;
    }
    readSoon();
    if (xcb_connection_has_error(connection) != 0)
        return unavailable("the X server is gone");
    if (failure == 0)
        return {};
    ungrab();
    if (failure == XCB_ACCESS)
        return {HotKeyStatus::taken, "another program has it"};
    return {HotKeyStatus::unavailable, "the X server refuses it with error " + std::to_string(failure)};
}

void X11ShortcutBinding::ungrab() {
    const auto held = std::exchange(grab_, std::nullopt);
    if (!held || xcb_connection_has_error(connection_.get()) != 0)
        return;
    for (const std::uint16_t combination : held->modifiers)
        xcb_ungrab_key(connection_.get(), held->keycode, root_, combination);
    xcb_flush(connection_.get());
}

/// Absent if the connection is lost.
std::optional<X11ShortcutBinding::Modifiers> X11ShortcutBinding::readModifiers() {
    auto* const connection = connection_.get();
    const xcb_setup_t* const setup = xcb_get_setup(connection);
    const auto keyCount = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto keyboardCookie = xcb_get_keyboard_mapping(connection, setup->min_keycode, keyCount);
    const auto modifierCookie = xcb_get_modifier_mapping(connection);
    const auto keyboard = owned(xcb_get_keyboard_mapping_reply(connection, keyboardCookie, nullptr));
    const auto modifiers = owned(xcb_get_modifier_mapping_reply(connection, modifierCookie, nullptr));
    if (!keyboard || !modifiers)
        return std::nullopt;
    const auto bit = [&](std::initializer_list<xcb_keysym_t> keysyms) {
        return modifierWith(keysyms, modifiers.get(), keyboard.get(), setup->min_keycode);
    };
    return Modifiers{.alt = bit({XK_Alt_L, XK_Alt_R}),
                     .super = bit({XK_Super_L, XK_Super_R}),
                     .numLock = bit({XK_Num_Lock})};
}

/// After answers were waited for: what else came with them does not wake the notifier.
void X11ShortcutBinding::readSoon() {
    QMetaObject::invokeMethod(
        readable_.get(), [this] { read(); }, Qt::QueuedConnection);
}

void X11ShortcutBinding::read() {
    if (!connection_)
        return;
    auto* const connection = connection_.get();
    int presses = 0;
    bool keyboardChanged = false;
    while (const auto event = owned(xcb_poll_for_event(connection))) {
        if (event->response_type == XCB_KEY_PRESS) {
            const auto* press = reinterpret_cast<const xcb_key_press_event_t*>(event.get());
            // A held key repeats: the server sends a release and a press, both of the same moment.
            const bool repeated = lastRelease_ == std::pair(press->detail, press->time);
            if (grab_ && press->detail == grab_->keycode && !repeated)
                ++presses;
        } else if (event->response_type == XCB_KEY_RELEASE) {
            const auto* release = reinterpret_cast<const xcb_key_release_event_t*>(event.get());
            lastRelease_ = {release->detail, release->time};
        } else if (event->response_type == XCB_MAPPING_NOTIFY) {
            const auto* change = reinterpret_cast<const xcb_mapping_notify_event_t*>(event.get());
            keyboardChanged = keyboardChanged || change->request != XCB_MAPPING_POINTER;
        }
    }
    if (xcb_connection_has_error(connection) != 0) {
        if (wanted_)
            log("the global shortcut is lost: the X server is gone");
        disconnect();
        return;
    }
    if (keyboardChanged && wanted_)
        followKeyboard();
    for (; presses > 0; --presses)
        pressed.emit({});
}

/// Another layout, or another keyboard: the place of the key stays, the modifiers may not.
void X11ShortcutBinding::followKeyboard() {
    const auto modifiers = readModifiers();
    readSoon();
    if (!modifiers || *modifiers == modifiers_)
        return;
    ungrab();
    const BindingOutcome outcome = grab();
    if (outcome.status != HotKeyStatus::noError)
        log("the global shortcut is lost for this keyboard: " + outcome.reason);
}

} // namespace quillo
