/// How commands name a thing by its identifier.
#pragma once

#include <cstddef>

namespace quillo {

/// The fewest hexadecimal digits from which an identifier is told.
inline constexpr std::size_t shortestPrefix = 8;

} // namespace quillo
