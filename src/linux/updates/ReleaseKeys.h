/// The makers' signatures.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace quillo {

/// The Ed25519 keys that releases may be signed with: the one in use, and the one that is to follow it. Any
/// thread. RFC 8032: https://www.rfc-editor.org/rfc/rfc8032
class ReleaseKeys {
public:
    /// Each is Base64 of 32 bytes; what is none is left out.
    explicit ReleaseKeys(std::span<const std::string_view> keys);

    bool empty() const { return keys_.empty(); }

    /// Whether the signature, 64 bytes, is that of one of the keys over all of these bytes.
    bool haveSigned(std::span<const std::byte> signature, std::span<const std::byte> bytes) const;

private:
    std::vector<std::array<unsigned char, 32>> keys_;
};

} // namespace quillo
