#include "parser/WhenKind.h"

#include <algorithm>
#include <iterator>

namespace quillo {

namespace {

/// In the order of the enumeration.
constexpr std::string_view all[] = {
    "NONE",
    "TODAY",
    "TONIGHT",
    "TOMORROW",
    "DAY_AFTER_TOMORROW",
    "THIS_SUNDAY",
    "THIS_MONDAY",
    "THIS_TUESDAY",
    "THIS_WEDNESDAY",
    "THIS_THURSDAY",
    "THIS_FRIDAY",
    "THIS_SATURDAY",
    "NEXT_SUNDAY",
    "NEXT_MONDAY",
    "NEXT_TUESDAY",
    "NEXT_WEDNESDAY",
    "NEXT_THURSDAY",
    "NEXT_FRIDAY",
    "NEXT_SATURDAY",
    "IN_MINUTES",
    "IN_HOURS",
    "IN_DAYS",
    "IN_WEEKS",
    "WEEKS_FROM_TOMORROW",
    "SPECIFIC_DATE",
    "THIS_WEEKEND",
};

static_assert(std::size(all) == static_cast<std::size_t>(WhenKind::ThisWeekend) + 1);

} // namespace

std::string_view rawValueOf(WhenKind kind) {
    return all[static_cast<std::size_t>(kind)];
}

std::span<const std::string_view> rawValues() {
    return all;
}

Result<WhenKind> whenKindOf(std::string_view rawValue) {
    const auto* const found = std::find(std::begin(all), std::end(all), rawValue);
    if (found == std::end(all))
        return Error{"Unexpected rawValue \"" + std::string(rawValue) + "\""};
    return static_cast<WhenKind>(found - std::begin(all));
}

} // namespace quillo
