/// A universally unique identifier: what a task is known by.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quillo {

struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    /// A fresh random identifier (version 4 of RFC 9562), from the kernel's random source.
    static Uuid random();

    /// Reads the canonical 36 characters, in either case; anything else is absent.
    static std::optional<Uuid> parse(std::string_view text);

    /// The canonical 36 characters, upper case.
    std::array<char, 36> characters() const;
    std::string toString() const;

    friend auto operator<=>(const Uuid&, const Uuid&) = default;

    /// Written out because lists are searched by it: with the size known, this is two comparisons and no
    /// call.
    friend bool operator==(const Uuid& left, const Uuid& right) {
        return std::memcmp(left.bytes.data(), right.bytes.data(), sizeof left.bytes) == 0;
    }
};

} // namespace quillo

template <>
struct std::hash<quillo::Uuid> {
    std::size_t operator()(const quillo::Uuid& uuid) const noexcept {
        // Random identifiers are their own hash; both halves are mixed so that hand-made ones spread as well.
        std::uint64_t halves[2];
        std::memcpy(halves, uuid.bytes.data(), sizeof halves);
        return static_cast<std::size_t>((halves[0] ^ (halves[1] >> 29)) * 0x9E3779B97F4A7C15ULL ^ halves[1]);
    }
};
