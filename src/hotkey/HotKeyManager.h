/// Keeps the keyboard shortcut: which one it is, that it is stored, and that it works.
#pragma once

#include "base/CallbackScope.h"
#include "base/Executor.h"
#include "base/Observable.h"
#include "model/HotKeyConfig.h"
#include "ports/HotKeyCenter.h"
#include "ports/Preferences.h"

#include <functional>
#include <optional>
#include <string>

namespace quillo {

/// Under which the shortcut is registered, and by which its presses are known: "QLLO".
inline constexpr HotKeyIdentifier quickAddHotKey{.signature = 0x514C4C4F, .id = 1};

/// Belongs to the main thread, which `mainExecutor` posts to. What it is given outlives it. A shortcut that
/// cannot be had is nobody's failure: there is none then, and nobody is told.
class HotKeyManager {
public:
    /// `current()` is the stored shortcut, or the default one. Registers nothing.
    HotKeyManager(Preferences& preferences, HotKeyCenter& center, Executor& mainExecutor);

    HotKeyManager(const HotKeyManager&) = delete;
    HotKeyManager& operator=(const HotKeyManager&) = delete;

    /// Which shortcut is wanted; not whether it could be had.
    const Observable<HotKeyConfig>& current() const { return current_; }

    /// Registers a shortcut in place of the one that is registered now. It lasts until it is replaced or the
    /// program ends.
    void registerHotKey(const HotKeyConfig& config);

    /// Gives the registered shortcut back, if there is one: who records a new one must be able to press it.
    void unregister();

    /// Whether the shortcut works, as far as the desktop has told yet.
    bool isRegistered() const { return hotKeyRef_ && status_ == HotKeyStatus::noError; }

    /// A newly chosen shortcut: makes it current, registers and stores it.
    void apply(const HotKeyConfig& config);

    void save(const HotKeyConfig& config);

    /// The stored shortcut; absent where none is stored, or nothing that could be read. That stays as it is
    /// until the next save.
    std::optional<HotKeyConfig> load() const;

    /// Called, if set, at every press of the shortcut.
    std::function<void()> onTrigger;

    /// With which a window may take the focus, while onTrigger is called; may be empty.
    const std::string& activationToken() const { return activationToken_; }

private:
    HotKeyCenter::Handler handler();
    void trigger(const std::string& activationToken);

    Preferences& preferences_;
    HotKeyCenter& center_;
    Executor& mainExecutor_;
    std::optional<HotKeyCenter::HotKeyReference> hotKeyRef_; ///< also while the desktop still thinks about it
    std::optional<HotKeyCenter::HandlerReference> eventHandler_;
    Observable<HotKeyConfig> current_;
    std::optional<HotKeyStatus> status_; ///< of the last registration; absent while none is known
    std::string activationToken_;
    CallbackScope scope_;
};

} // namespace quillo
