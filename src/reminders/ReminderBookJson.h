/// The stored form of the book of reminders: a compact JSON array of objects.
///
///     [{"identifier":"quillo.…","title":"Quillo","body":"Call mom","sound":true,"interruptionLevel":2,
///       "year":2025,"month":3,"day":5,"hour":9,"minute":0,"dueDate":762854400.0,"delivered":true}]
///
/// The due date is in seconds since 2001; "delivered" is left out where it is false. All functions may be
/// called from any thread.
#pragma once

#include "ports/ReminderCenter.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quillo {

/// A reminder as the book has it.
struct BookedReminder {
    ReminderRequest request;
    bool delivered = false; ///< has been shown

    friend bool operator==(const BookedReminder&, const BookedReminder&) = default;
};

/// By identifier.
using BookedReminders = std::map<std::string, BookedReminder, std::less<>>;

/// The most bytes that a book, and one text in it, may have.
inline constexpr std::size_t largestReminderBook = std::size_t{16} << 20;
inline constexpr std::size_t longestReminderText = std::size_t{64} << 10;

/// One entry of the array; absent if it could not be read again: no identifier, a text that is too long or
/// not UTF-8, numbers that no calendar has.
std::optional<std::string> encodeBookedReminder(const BookedReminder& reminder);

struct DecodedReminderBook {
    BookedReminders reminders;
    std::size_t skipped = 0; ///< entries that are none
};

/// Reads a book. The bytes are foreign: what is no JSON array, or too large, is no book; an entry with a key
/// missing, of the wrong type or out of range is skipped. Unknown keys are ignored; of entries with one
/// identifier the last counts.
std::optional<DecodedReminderBook> decodeReminderBook(std::string_view bytes);

} // namespace quillo
