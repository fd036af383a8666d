/// Passwords in the user's keyring, and in memory where that does not keep them.
#pragma once

#include "sync/Keyring.h"
#include "sync/Passwords.h"

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace quillo {

/// What was given since the start and not taken by the keyring counts before what the keyring has. Once the
/// user has refused to unlock it he is not asked again, until a password is given or mayAsk() is called.
class KeptPasswords final : public Passwords {
public:
    /// Gives the keyring; null where there is none. Called on the thread that needs a password.
    using Load = std::function<Keyring*()>;

    explicit KeptPasswords(Load load, Keyring::Ask ask = Keyring::Ask::Yes)
        : load_(std::move(load)), ask_(ask) {}

    Result<std::optional<std::string>> find(const WebDavFolder& place) override;
    Result<Kept> keep(const WebDavFolder& place, std::string password) override;
    Outcome forget(const WebDavFolder& place) override;

    /// From now on the user may be asked to unlock the keyring.
    void mayAsk() { ask_ = Keyring::Ask::Yes; }

    /// Whether the keyring has the password. Never asks the user.
    bool isInKeyring(const WebDavFolder& place);

private:
    using Key = std::pair<std::string, std::string>; ///< URL and user

    const Load load_;
    std::atomic<Keyring::Ask> ask_;
    std::mutex mutex_; ///< not held while the keyring is asked
    std::map<Key, std::string> inMemory_;
    std::optional<Error> refused_;
};

} // namespace quillo
