/// Keyboard shortcuts that work whichever program has the keyboard.
#pragma once

#include "base/Observable.h"
#include "model/HotKeyConfig.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace quillo {

enum class HotKeyStatus : std::int32_t {
    noError = 0,
    eventNotHandled = -9874, ///< a handler's answer: the event was none
    taken = -9878,           ///< the shortcut is another's, or was refused
    unavailable = -9879      ///< nothing here can offer this shortcut
};

/// Tells a program's own shortcuts from each other and from those of others.
struct HotKeyIdentifier {
    std::uint32_t signature = 0; ///< four characters, the first in the highest byte
    std::uint32_t id = 0;

    friend bool operator==(const HotKeyIdentifier&, const HotKeyIdentifier&) = default;
};

/// A shortcut was pressed.
struct HotKeyEvent {
    std::optional<HotKeyIdentifier> identifier; ///< the registration's; absent where it could not be told
    std::string activationToken;                ///< with which a window may take the focus; may be empty
};

/// Which keys a shortcut really has, where the desktop decides that and not the program.
struct DesktopKeys {
    std::string description;   ///< in the desktop's words, UTF-8; empty where it does not tell
    bool configurable = false; ///< HotKeyCenter::configure() leads the user to where it is decided

    friend bool operator==(const DesktopKeys&, const DesktopKeys&) = default;
};

/// Belongs to the main thread.
class HotKeyCenter {
public:
    enum class HandlerReference : std::uint64_t {};
    enum class HotKeyReference : std::uint64_t {};

    /// Called at every press of a registered shortcut, once however long the key is held. The event may be
    /// null: there is none then.
    using Handler = std::function<HotKeyStatus(const HotKeyEvent*)>;

    /// noError, or why there is no shortcut; the reasons are in the log.
    using Answer = std::function<void(HotKeyStatus)>;

    virtual ~HotKeyCenter() = default;

    virtual HandlerReference installHandler(Handler handler) = 0;

    /// Removes a handler; one that is not installed is nobody's concern. Not from within a handler.
    virtual void removeHandler(HandlerReference reference) = 0;

    /// Registers a shortcut under an identifier. The answer is given once, possibly before the call returns,
    /// and never once the reference was unregistered. A reference that was not answered with noError need
    /// not be unregistered.
    virtual HotKeyReference registerHotKey(const HotKeyConfig& config, const HotKeyIdentifier& identifier,
                                           Answer answer) = 0;

    /// Gives a shortcut back, at once, or stops trying to have it.
    virtual void unregisterHotKey(HotKeyReference reference) = 0;

    /// Those of the registered shortcut; absent while there is none, or where it has the keys that were asked
    /// for.
    virtual const Observable<std::optional<DesktopKeys>>& desktopKeys() const = 0;

    /// Shows the desktop's own dialog for the registered shortcut; nothing where it is not configurable.
    virtual void configure() = 0;
};

} // namespace quillo
