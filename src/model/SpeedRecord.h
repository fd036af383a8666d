/// The fastest or the slowest completion of a task, and its stored form.
#pragma once

#include "base/Instant.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillo {

/// A value, compared field by field.
struct SpeedRecord {
    std::string title;          ///< the task's at the moment of completion; UTF-8
    double durationSeconds = 0; ///< from the task's creation to its completion
    Instant completedAt;

    friend bool operator==(const SpeedRecord&, const SpeedRecord&) = default;
};

/// The most bytes that a stored record may have.
inline constexpr std::size_t largestStoredRecord = std::size_t{1} << 20;

/// Reads {"title":"...","durationSeconds":12.5,"completedAt":762000000.25}, the moment in seconds since 2001.
/// The bytes are foreign: absent unless they are well-formed JSON and UTF-8 to the last one, with each of the
/// three keys there and of its type. Keys may come in any order and unknown ones are skipped. Any thread.
std::optional<SpeedRecord> decodeSpeedRecord(std::string_view bytes);

/// Writes what decodeSpeedRecord reads, to the last bit. Absent if that could not be read again: a number
/// that is not finite, a title that is not UTF-8, more bytes than largestStoredRecord. Any thread.
std::optional<std::string> encodeSpeedRecord(const SpeedRecord& record);

} // namespace quillo
