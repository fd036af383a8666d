/// The kinds of dates that a text can speak of, as a classification tells them apart.
#pragma once

#include "base/Result.h"

#include <span>
#include <string_view>

namespace quillo {

/// The days of a family stand together, from Sunday to Saturday.
enum class WhenKind {
    None,
    Today,
    Tonight,
    Tomorrow,
    DayAfterTomorrow,
    ThisSunday,
    ThisMonday,
    ThisTuesday,
    ThisWednesday,
    ThisThursday,
    ThisFriday,
    ThisSaturday,
    NextSunday,
    NextMonday,
    NextTuesday,
    NextWednesday,
    NextThursday,
    NextFriday,
    NextSaturday,
    InMinutes,
    InHours,
    InDays,
    InWeeks,
    WeeksFromTomorrow,
    SpecificDate,
    ThisWeekend,
};

/// The name by which language models and interpretations call a kind: "DAY_AFTER_TOMORROW".
std::string_view rawValueOf(WhenKind kind);

/// All these names, in the order of the kinds. A constant.
std::span<const std::string_view> rawValues();

/// The kind of that very name, upper case and all. What is none is foreign and may hold anything; the error
/// quotes it.
Result<WhenKind> whenKindOf(std::string_view rawValue);

} // namespace quillo
