/// How many tasks were completed on which day, and its stored form.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quillo {

/// By day key (stats/LocalDay.h), and so by date. Foreign keys that name no day may be among them.
using DailyCounts = std::map<std::string, std::int64_t, std::less<>>;

/// The most bytes that stored counts may have. Two months of days need one 64th of it.
inline constexpr std::size_t largestStoredCounts = std::size_t{64} << 10;

/// Reads a JSON object of counts, {"2026-03-05":3}. The bytes are foreign: absent unless they are well-formed
/// JSON and UTF-8 to the last one and every count is an integer of at least 0. Of a key given twice the last
/// counts. Any thread.
std::optional<DailyCounts> decodeDailyCounts(std::string_view bytes);

/// Writes what decodeDailyCounts reads; absent if that would be more than largestStoredCounts. Any thread.
std::optional<std::string> encodeDailyCounts(const DailyCounts& counts);

} // namespace quillo
