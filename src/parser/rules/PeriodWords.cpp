/// Parts of the day: "morning", "afternoon", "evening", "night".
#include "parser/rules/Families.h"

namespace quillo::rules {

namespace {

using unicode::Regex;
using unicode::RegexMatch;

template <int hour>
std::optional<ClockTime> atHour(const RegexMatch&, const Reference&) {
    return ClockTime{hour, 0};
}

constinit const Rule<ClockTime> rows[] = {
    {"morning", {uR"(\bmorning\b)", Regex::Case::Insensitive, {{u"morning"}}}, atHour<9>},
    {"afternoon", {uR"(\bafternoon\b)", Regex::Case::Insensitive, {{u"afternoon"}}}, atHour<14>},
    {"evening", {uR"(\bevening\b)", Regex::Case::Insensitive, {{u"evening"}}}, atHour<18>},
    {"night", {uR"(\bnight\b)", Regex::Case::Insensitive, {{u"night"}}}, atHour<20>},
};

constinit const Pattern eveningWords{
    uR"(\b(tonight|evening|night)\b)", Regex::Case::Insensitive, {{u"tonight", u"evening", u"night"}}};

} // namespace

const Family<ClockTime> periodWords{"period words", rows};

bool speaksOfEvening(const Subject& subject) {
    return eveningWords.search(subject.text, subject.sightings).has_value();
}

} // namespace quillo::rules
