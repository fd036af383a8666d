/// The keyring behind the Secret Service: that of GNOME, KDE's wallets, KeePassXC.
#pragma once

#include "sync/Keyring.h"

#include <chrono>

namespace quillo {

/// Asks the service anew each time: it may come and go, and the session bus with it. Passwords have the
/// schema "org.quillo.Quillo.Sync" and the attributes "url" and "user".
class SecretServiceKeyring final : public Keyring {
public:
    /// How long the service may take, and how long the user where he is asked.
    static constexpr std::chrono::seconds patience{5};
    static constexpr std::chrono::minutes patienceWithUser{5};

    Result<std::optional<std::string>> find(const WebDavFolder& place, Ask ask) override;
    bool has(const WebDavFolder& place) override;
    Result<bool> keep(const WebDavFolder& place, const std::string& password) override;
    Outcome forget(const WebDavFolder& place) override;
};

} // namespace quillo
