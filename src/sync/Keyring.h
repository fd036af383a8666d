/// What keeps the user's passwords for all programs, as the rest of this program sees it.
#pragma once

#include "base/Result.h"
#include "sync/SyncPlace.h"

#include <optional>
#include <string>

namespace quillo {

/// It is in a library of its own, `quillo-secrets`, which is loaded when a password is needed: most users
/// have none, and it takes ten more libraries. Thread-safe. Each call waits: for seconds at most, or as long
/// as the user takes where he may be asked. None on the main thread of a program that stays.
class Keyring {
public:
    /// Whether the user may be asked to unlock it. The system asks, not this program.
    enum class Ask { Yes, No };

    virtual ~Keyring() = default;

    /// Absent where it has none, or there is no keyring at all. An error says in words for the user why it
    /// cannot be had.
    virtual Result<std::optional<std::string>> find(const WebDavFolder& place, Ask ask) = 0;

    /// Whether it has one, be it locked. Never asks.
    virtual bool has(const WebDavFolder& place) = 0;

    /// In the place of the one that it has. May ask. False where there is no keyring at all; an error says
    /// why it is not kept otherwise.
    virtual Result<bool> keep(const WebDavFolder& place, const std::string& password) = 0;

    /// May ask. Without a keyring there is nothing to forget.
    virtual Outcome forget(const WebDavFolder& place) = 0;
};

/// What the library has to offer, under the name in `keyringGetter`. It lives until the end.
using GetKeyring = Keyring* (*)();
inline constexpr const char* keyringGetter = "quilloGetKeyring";

} // namespace quillo
