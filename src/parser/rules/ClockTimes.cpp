/// Clock times: "noon", "at 3", "9:30 pm", "at 1530".
#include "parser/rules/Families.h"

namespace quillo::rules {

namespace {

using unicode::Regex;
using unicode::RegexMatch;

std::optional<ClockTime> checked(std::int64_t hour, std::int64_t minute) {
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59)
        return std::nullopt;
    return ClockTime{static_cast<int>(hour), static_cast<int>(minute)};
}

/// Three or four digits without a colon: the last two are the minute.
std::optional<ClockTime> splitDigits(std::u16string_view digits) {
    const auto hour = number(digits.substr(0, digits.size() - 2));
    const auto minute = number(digits.substr(digits.size() - 2));
    if (!hour || !minute)
        return std::nullopt;
    return ClockTime{static_cast<int>(*hour), static_cast<int>(*minute)};
}

std::optional<ClockTime> onTwelveHourClock(std::int64_t hour, std::int64_t minute,
                                           std::u16string_view suffix) {
    if (isWord(suffix, u"pm") && hour < 12)
        hour += 12;
    else if (isWord(suffix, u"am") && hour == 12)
        hour = 0;
    return checked(hour, minute);
}

std::optional<ClockTime> noon(const RegexMatch&, const Reference&) {
    return ClockTime{12, 0};
}

std::optional<ClockTime> midnight(const RegexMatch&, const Reference&) {
    return ClockTime{0, 0};
}

std::optional<ClockTime> digitsWithSuffix(const RegexMatch& match, const Reference&) {
    const auto time = splitDigits(match.group(1));
    return time ? onTwelveHourClock(time->hour, time->minute, match.group(2)) : std::nullopt;
}

std::optional<ClockTime> hourWithSuffix(const RegexMatch& match, const Reference&) {
    const auto hour = number(match.group(1));
    const auto minute = match.group(2).empty() ? 0 : number(match.group(2));
    return hour && minute ? onTwelveHourClock(*hour, *minute, match.group(3)) : std::nullopt;
}

std::optional<ClockTime> digitsAfterAt(const RegexMatch& match, const Reference&) {
    const auto time = splitDigits(match.group(1));
    return time ? checked(time->hour, time->minute) : std::nullopt;
}

/// A bare hour is meant for the waking day: 1 to 7 are afternoon and evening hours, and on an evening so are
/// 8 to 11.
std::optional<ClockTime> hourAfterAt(const RegexMatch& match, const Reference& reference) {
    const auto hour = number(match.group(1));
    const auto minute = match.group(2).empty() ? 0 : number(match.group(2));
    if (!hour || !minute)
        return std::nullopt;
    const bool afterNoon = *hour >= 1 && *hour <= 11 && (reference.evening || *hour < 8);
    return checked(afterNoon ? *hour + 12 : *hour, *minute);
}

constinit const Rule<ClockTime> rows[] = {
    {"noon", {uR"(\bnoon\b)", Regex::Case::Insensitive, {{u"noon"}}}, noon},
    {"midnight", {uR"(\bmidnight\b)", Regex::Case::Insensitive, {{u"midnight"}}}, midnight},
    {"[at] <hmm|hhmm> am|pm",
     {uR"((?i)\b(?:at\s+)?(\d{3,4})\s*(am|pm)\b)", Regex::Case::Sensitive, {{u"am", u"pm"}, {}, true}},
     digitsWithSuffix},
    {"[at] <hour>[:<minute>] am|pm",
     {uR"((?i)\b(?:at\s+)?(\d{1,2})(?::(\d{2}))?\s*(am|pm)\b)",
      Regex::Case::Sensitive,
      {{u"am", u"pm"}, {}, true}},
     hourWithSuffix},
    {"at <hmm|hhmm>",
     {uR"((?i)\bat\s+(\d{3,4})\b)", Regex::Case::Sensitive, {{u"at"}, {}, true}},
     digitsAfterAt},
    {"at <hour>[:<minute>]",
     {uR"((?i)\bat\s+(\d{1,2})(?::(\d{2}))?\b(?!\s*(?:am|pm)))", Regex::Case::Sensitive, {{u"at"}, {}, true}},
     hourAfterAt},
};

} // namespace

const Family<ClockTime> clockTimes{"clock times", rows};

} // namespace quillo::rules
