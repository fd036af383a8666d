/// One of the ways in which a Linux desktop can offer a shortcut that works everywhere.
#pragma once

#include "base/Observable.h"
#include "base/Signal.h"
#include "model/HotKeyConfig.h"
#include "ports/HotKeyCenter.h"

#include <functional>
#include <optional>
#include <string>

namespace quillo {

/// Whether a shortcut could be had. `unavailable` is worth trying another way, `taken` is not.
struct BindingOutcome {
    HotKeyStatus status = HotKeyStatus::noError;
    std::string reason; ///< why not, for the log: a sentence without its first capital and its full stop
};

/// Has one shortcut at a time. Belongs to the main thread; nothing is asked of the desktop before the first
/// bind().
class ShortcutBinding {
public:
    virtual ~ShortcutBinding() = default;

    /// Asks for a shortcut, in place of the one it has. The answer is given once, possibly before the call
    /// returns, and never after a later bind() or release().
    virtual void bind(const HotKeyConfig& config, std::function<void(const BindingOutcome&)> answer) = 0;

    /// Gives the shortcut back, if it has one, or stops asking for it.
    virtual void release() = 0;

    /// Shows the desktop's own dialog for the shortcut it has, where desktopKeys says that there is one.
    virtual void configure() {}

    /// Absent while it has no shortcut, or where that has the keys that were asked for.
    Observable<std::optional<DesktopKeys>> desktopKeys;

    /// The shortcut was pressed; with a token with which a window may take the focus, or an empty one.
    /// Listeners do not bind or release.
    Signal<const std::string& /*activationToken*/> pressed;
};

} // namespace quillo
