/// What a language model says about a text: not a date, but what kind of date the text speaks of.
#pragma once

#include "parser/WhenKind.h"

#include <cstdint>
#include <string>

namespace quillo {

/// Models are asked to keep to the ranges, and do not always. resolveDate() (parser/ResolveDate.h) takes any
/// numbers.
struct GeneratedTodo {
    WhenKind kind = WhenKind::None;
    std::int64_t amount = 0; ///< of minutes, hours, days or weeks, for the kinds that count; otherwise 0
    std::int64_t month = 0;  ///< 1 ... 12 for SpecificDate; 0 if the text names no month
    std::int64_t day = 0;    ///< 1 ... 31 for SpecificDate; otherwise 0
    bool hasTime = false;    ///< the text names a time of day
    std::int64_t hour = 0;   ///< 0 ... 23
    std::int64_t minute = 0; ///< 0 ... 59
    std::string title;       ///< the text without what it says about time; UTF-8

    friend bool operator==(const GeneratedTodo&, const GeneratedTodo&) = default;
};

} // namespace quillo
