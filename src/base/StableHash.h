/// A hash that is the same in every program, whatever library it was built with.
#pragma once

#include <cstdint>
#include <string_view>

namespace quillo {

/// FNV-1a. Tells texts apart that nobody has made up to be taken for one another.
constexpr std::uint64_t stableHash(std::string_view text) {
    std::uint64_t value = 0xcbf29ce484222325;
    for (const char c : text) {
        value ^= static_cast<unsigned char>(c);
        value *= 0x100000001b3;
    }
    return value;
}

} // namespace quillo
