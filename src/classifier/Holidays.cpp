#include "classifier/Holidays.h"

#include <algorithm>
#include <iterator>

namespace quillo::classifier {

namespace {

using namespace std::chrono;

struct Holiday {
    std::string_view kind;
    sys_days (*in)(year);
};

// The days in the United States; the others follow from Easter.
constexpr Holiday holidays[] = {
    {"THANKSGIVING", [](year y) { return sys_days(y / November / Thursday[4]); }},
    {"CYBER_MONDAY", [](year y) { return sys_days(y / November / Thursday[4]) + days(4); }},
    {"MLK_DAY", [](year y) { return sys_days(y / January / Monday[3]); }},
    {"PRESIDENTS_DAY", [](year y) { return sys_days(y / February / Monday[3]); }},
    {"COLUMBUS_DAY", [](year y) { return sys_days(y / October / Monday[2]); }},
    {"LABOR_DAY", [](year y) { return sys_days(y / September / Monday[1]); }},
    {"MEMORIAL_DAY", [](year y) { return sys_days(y / May / Monday[last]); }},
    {"MOTHERS_DAY", [](year y) { return sys_days(y / May / Sunday[2]); }},
    {"FATHERS_DAY", [](year y) { return sys_days(y / June / Sunday[3]); }},
    {"EASTER", easter},
    {"GOOD_FRIDAY", [](year y) { return easter(y) - days(2); }},
    {"EASTER_MONDAY", [](year y) { return easter(y) + days(1); }},
};

} // namespace

std::optional<sys_days> comingHoliday(std::string_view kind, sys_days today) {
    const auto* const holiday = std::find_if(std::begin(holidays), std::end(holidays),
                                             [&](const Holiday& known) { return known.kind == kind; });
    if (holiday == std::end(holidays))
        return std::nullopt;
    const year thisYear = year_month_day(today).year();
    const sys_days date = holiday->in(thisYear);
    return date >= today ? date : holiday->in(thisYear + years(1));
}

} // namespace quillo::classifier
