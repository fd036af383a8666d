#include "linux/updates/ReleaseKeys.h"

#include <sodium/core.h>
#include <sodium/crypto_sign_ed25519.h>
#include <sodium/utils.h>

#include <algorithm>

namespace quillo {

namespace {

const unsigned char* octets(std::span<const std::byte> bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

} // namespace

ReleaseKeys::ReleaseKeys(std::span<const std::string_view> keys) {
    static_assert(sizeof(decltype(keys_)::value_type) == crypto_sign_ed25519_PUBLICKEYBYTES);
    for (const std::string_view text : keys) {
        decltype(keys_)::value_type key{};
        std::size_t length = 0;
        const int outcome = sodium_base642bin(key.data(), key.size(), text.data(), text.size(), nullptr,
                                              &length, nullptr, sodium_base64_VARIANT_ORIGINAL);
        if (outcome == 0 && length == key.size())
            keys_.push_back(key);
    }
}

bool ReleaseKeys::haveSigned(std::span<const std::byte> signature, std::span<const std::byte> bytes) const {
    static const bool ready = sodium_init() >= 0; // Not before it is needed, and from any thread.
    return ready && signature.size() == crypto_sign_ed25519_BYTES &&
           std::any_of(keys_.begin(), keys_.end(), [&](const auto& key) {
               return crypto_sign_ed25519_verify_detached(octets(signature), octets(bytes), bytes.size(),
                                                          key.data()) == 0;
           });
}

} // namespace quillo
