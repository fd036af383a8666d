/// Passwords for places that want one.
#pragma once

#include "base/Result.h"
#include "sync/SyncPlace.h"

#include <optional>
#include <string>

namespace quillo {

/// Keeps the passwords of places where only the user gets at them; never in a file of ours, a log or an
/// argument. Thread-safe. Each call may wait, for the user too, who may have to unlock a keyring: none on the
/// main thread.
class Passwords {
public:
    virtual ~Passwords() = default;

    /// The password of that user at that place; absent where none is kept. An error says in words for the
    /// user why it cannot be had.
    virtual Result<std::optional<std::string>> find(const WebDavFolder& place) = 0;

    /// What came of keeping a password.
    enum class Kept {
        ForGood,    ///< it is found again after the next start
        UntilTheEnd ///< of this program, as there is nothing that keeps passwords
    };
    virtual Result<Kept> keep(const WebDavFolder& place, std::string password) = 0;

    virtual Outcome forget(const WebDavFolder& place) = 0;
};

} // namespace quillo
