/// Passwords for places that want one.
#pragma once

#include "base/Result.h"
#include "sync/SyncPlace.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillo {

/// The most bytes that a password may have.
inline constexpr std::size_t longestPassword = 1024;

/// An error in words for the user, which does not repeat it, where that can be no password: it is empty, too
/// long, not UTF-8, or has a line break or another control character in it.
Outcome checkPassword(std::string_view password);

/// What is in the way where a place wants a password and there is none, in words for the user.
Error passwordIsWanted(const WebDavFolder& place);

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
