/// How large the parts of the network are.
#pragma once

#include <array>
#include <cstddef>

namespace quillo::classifier {

inline constexpr std::size_t tokenCharacters = 12; ///< of longer words the first 8 and the last 4
inline constexpr std::size_t characterWidth = 16;
inline constexpr std::size_t filterCount = 48;
inline constexpr std::size_t valueWidth = 16;
inline constexpr std::size_t lexiconWidth = 16;
inline constexpr std::size_t flagCount = 10;
inline constexpr std::size_t inputWidth = filterCount + valueWidth + lexiconWidth + flagCount;
inline constexpr std::size_t width = 112;
inline constexpr std::size_t neighbours = 3; ///< that a convolution sees: left, itself, right
inline constexpr std::array<std::size_t, 4> distances = {1, 1, 2, 1}; ///< of the neighbours, a layer each

/// What a run of digits may be: 0 ... 99 are themselves.
enum ValueClass : std::size_t { Clock = 100, Year, OtherNumber, LongNumber, NoNumber, ValueClassCount };

/// What a token is for.
enum class Role : std::size_t {
    Keep,
    Strip, ///< says when, and nothing more is read from it
    Amount,
    Hour,
    Minute,
    HourAndMinute, ///< 930
    Day,
    Month,
    FirstOfPair, ///< 5/12, whose order the user's place decides
    SecondOfPair,
    Year,
};
inline constexpr std::size_t roleCount = 11;

/// How far from its date a text means; the amount says how many.
enum class Shift : std::size_t { None, DaysBefore, DaysAfter, WeeksBefore, WeeksAfter, FromTomorrow };
inline constexpr std::size_t shiftCount = 6;

inline constexpr std::size_t headCount = 7;   ///< kind, amount, month, day, hour, minute, shift
inline constexpr std::size_t monthCount = 13; ///< 0 is none
inline constexpr std::size_t dayCount = 32;   ///< 0 is none
inline constexpr std::size_t hourCount = 25;  ///< the last is none

} // namespace quillo::classifier
