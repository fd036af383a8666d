#include "classifier/Answer.h"

#include "classifier/Dates.h"
#include "classifier/Holidays.h"
#include "classifier/Title.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

namespace quillo::classifier {

namespace {

using std::chrono::days;
using std::chrono::months;
using std::chrono::year_month;
using std::chrono::year_month_day;
using std::chrono::years;

constexpr std::size_t noHour = 24;
constexpr std::int64_t mostUnits = 999;
constexpr std::string_view weekdays[] = {"SUNDAY",   "MONDAY", "TUESDAY", "WEDNESDAY",
                                         "THURSDAY", "FRIDAY", "SATURDAY"};
constexpr std::string_view plainKinds[] = {
    "TODAY",         "TONIGHT",      "TOMORROW",       "DAY_AFTER_TOMORROW", "THIS_SUNDAY",
    "THIS_MONDAY",   "THIS_TUESDAY", "THIS_WEDNESDAY", "THIS_THURSDAY",      "THIS_FRIDAY",
    "THIS_SATURDAY", "NEXT_SUNDAY",  "NEXT_MONDAY",    "NEXT_TUESDAY",       "NEXT_WEDNESDAY",
    "NEXT_THURSDAY", "NEXT_FRIDAY",  "NEXT_SATURDAY",  "THIS_WEEKEND",
};
/// Of holidays, too, a text may mean the day before.
constexpr std::string_view shiftedKinds[] = {"SPECIFIC_DATE",  "NUMERIC_DATE", "THIS_MONTH_DAY",
                                             "NEXT_MONTH_DAY", "IN_DAYS",      "IN_MONTHS"};
constexpr std::string_view countingKinds[] = {"IN_MINUTES", "IN_HOURS", "IN_DAYS", "IN_WEEKS",
                                              "WEEKS_FROM_TOMORROW"};

template <class List>
bool isAmong(const List& list, std::string_view word) {
    return std::find(std::begin(list), std::end(list), word) != std::end(list);
}

/// Scores as probabilities.
template <class Scores>
std::vector<double> probabilities(const Scores& scores) {
    const double highest = *std::max_element(scores.begin(), scores.end());
    std::vector<double> result;
    double total = 0;
    for (const float score : scores)
        total += result.emplace_back(std::exp(static_cast<double>(score) - highest));
    for (double& probability : result)
        probability /= total;
    return result;
}

std::size_t placeOfHighest(const std::vector<double>& values) {
    return static_cast<std::size_t>(std::max_element(values.begin(), values.end()) - values.begin());
}

/// Whether dates such as 5/12 begin with the month where the user lives.
bool monthComesFirst(std::string_view locale) {
    const std::string_view language = locale.substr(0, locale.find('_'));
    if (locale.find('_') == std::string_view::npos)
        return language.size() != 2 || language == "en";
    const std::string_view rest = locale.substr(locale.find('_') + 1);
    constexpr std::string_view regions[] = {"US", "PH", "CA", "FM", "PW", "MH", "GU", "PR", "VI", "AS", "MP"};
    return isAmong(regions, rest.substr(0, rest.find('_')));
}

/// One text's answer in the making.
class Reading {
public:
    Reading(const Weights& weights, const std::vector<Token>& tokens, const Impression& impression,
            const ModelReference& reference)
        : weights_(weights), tokens_(tokens), impression_(impression), locale_(reference.locale),
          today_(year(reference.year) / month(static_cast<unsigned>(reference.month)) /
                 day(static_cast<unsigned>(reference.day))) {}

    /// Absent where what was said does not fit together.
    std::optional<Answer> read() {
        const std::vector<double> kinds = probabilities(impression_.kind);
        const std::size_t best = placeOfHighest(kinds);
        score_ = kinds[best];
        const std::string& kind = weights_.kinds[best];
        if (kind == "NONE") {
            answer_.score = score_;
            return answer_;
        }
        assignRoles();
        if (!(kind == "IN_MINUTES" || kind == "IN_HOURS" || readTime()) || !readDay(kind))
            return std::nullopt;
        answer_.score = score_;
        return answer_;
    }

    const std::vector<Role>& roles() const { return roles_; }

private:
    /// Only digits stand for numbers. A doubt about them is one about the date; one about words is only about
    /// the title.
    void assignRoles() {
        double least = 1;
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            const bool digits = isDigit(tokens_[i].word.front());
            const std::size_t allowed = digits ? roleCount : 2;
            const std::vector<double> scores = probabilities(
                std::vector<float>(impression_.roles[i].begin(),
                                   impression_.roles[i].begin() + static_cast<std::ptrdiff_t>(allowed)));
            const std::size_t best = placeOfHighest(scores);
            if (digits)
                least = std::min(least, scores[best]);
            const auto role = static_cast<Role>(best);
            roles_.push_back(role == Role::Strip && !mayBeCut(tokens_[i].word) ? Role::Keep : role);
        }
        score_ *= least;
    }

    /// A word that no phrase has says something else: rather one too many in the title than one lost.
    bool mayBeCut(std::u32string_view word) const {
        return !isLetter(word.front()) || word.size() < 3 || weights_.cutWords.look(word).word != 0;
    }

    /// The first number of that role; of its digits there are four at most.
    std::optional<std::u32string_view> digits(Role role) const {
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (roles_[i] == role && tokens_[i].word.size() <= 4)
                return tokens_[i].word;
        }
        return std::nullopt;
    }

    static int valueOf(std::u32string_view digits) {
        int value = 0;
        for (const char32_t digit : digits)
            value = value * 10 + static_cast<int>(digit - U'0');
        return value;
    }

    std::optional<int> number(Role role) const {
        const auto found = digits(role);
        return found ? std::optional(valueOf(*found)) : std::nullopt;
    }

    /// What the text says in words.
    std::size_t choose(const std::vector<float>& head) {
        const std::vector<double> scores = probabilities(head);
        const std::size_t best = placeOfHighest(scores);
        score_ *= scores[best];
        return best;
    }

    bool readTime() {
        const auto run = digits(Role::HourAndMinute);
        const auto clock = number(Role::Hour);
        if (!run && !clock) {
            const std::size_t hour = choose(impression_.hour);
            if (hour != noHour)
                setTime(static_cast<int>(hour), weights_.minutes[choose(impression_.minute)]);
            return true;
        }
        if (run && run->size() < 3)
            return false;
        int hour = run ? valueOf(*run) / 100 : *clock;
        int minute = run ? valueOf(*run) % 100 : number(Role::Minute).value_or(0);
        if (hour > 24 || minute > 59)
            return false;
        hour %= 24;
        if (hour <= 12) {
            const std::vector<double> hours = probabilities(impression_.hour);
            const auto morning = static_cast<std::size_t>(hour % 12);
            const std::size_t afternoon = morning + 12;
            const double both = std::max(hours[morning] + hours[afternoon], 1e-9);
            const std::size_t likelier = hours[morning] >= hours[afternoon] ? morning : afternoon;
            score_ *= hours[likelier] / both;
            hour = static_cast<int>(likelier);
        }
        if (!run && !digits(Role::Minute)) { // Half past 6.
            const std::vector<double> minutes = probabilities(impression_.minute);
            if (const std::size_t best = placeOfHighest(minutes); minutes[best] > 0.5)
                minute = weights_.minutes[best];
        }
        setTime(hour, minute);
        return true;
    }

    void setTime(int hour, int minute) {
        answer_.hasTime = true;
        answer_.hour = hour;
        answer_.minute = minute;
    }

    bool readDay(std::string_view kind) {
        if (isAmong(plainKinds, kind)) {
            answer_.kind = kind;
            return true;
        }
        if ((isAmong(shiftedKinds, kind) || comingHoliday(kind, today_)) && !readShift(kind))
            return false;
        if (isAmong(countingKinds, kind) || kind == "IN_MONTHS")
            return readAmount(kind);
        if (kind == "SPECIFIC_DATE")
            return readDate();
        if (kind == "NUMERIC_DATE")
            return readNumericDate();
        if (kind == "THIS_MONTH_DAY" || kind == "NEXT_MONTH_DAY")
            return readDayOfMonth(kind == "NEXT_MONTH_DAY");
        const auto ofWeekday = [&](std::string_view prefix) -> std::optional<weekday> {
            if (!kind.starts_with(prefix))
                return std::nullopt;
            const auto* const found =
                std::find(std::begin(weekdays), std::end(weekdays), kind.substr(prefix.size()));
            if (found == std::end(weekdays))
                return std::nullopt;
            return weekday(static_cast<unsigned>(found - std::begin(weekdays)));
        };
        const sys_days monday = today_ - (weekday(today_) - std::chrono::Monday); // of this week
        if (const auto wanted = ofWeekday("NEXT_WEEK_"))
            return on(monday + days(7) + (*wanted - std::chrono::Monday));
        if (const auto wanted = ofWeekday("WEEK_AFTER_"))
            return readWeeksAfter(*wanted);
        if (const auto wanted = ofWeekday("NTH_"))
            return readWeekdayOfMonth(*wanted);
        if (kind == "NEXT_WEEKEND")
            return on(onOrAfter(today_, std::chrono::Saturday) + days(7));
        if (kind == "WEEK_AFTER_NEXT")
            return on(monday + days(14));
        const std::optional<sys_days> holiday = comingHoliday(kind, today_);
        return holiday && on(*holiday);
    }

    /// What the text counts, in digits or words; absent unless it is 1 ... most.
    std::optional<std::int64_t> amount(std::int64_t most = mostUnits) {
        const std::optional<int> written = number(Role::Amount);
        const std::int64_t count = written ? *written : weights_.amounts[choose(impression_.amount)];
        return count >= 1 && count <= most ? std::optional(count) : std::nullopt;
    }

    bool readWeeksAfter(weekday wanted) {
        const auto weeks = amount();
        return weeks && on(onOrAfter(today_ + days(1), wanted) + days(7 * *weeks));
    }

    /// Two days before Christmas is as far away as Christmas is in two days: the day itself is read, by
    /// another today.
    bool readShift(std::string_view kind) {
        shift_ = static_cast<Shift>(choose(impression_.shift));
        if (shift_ == Shift::None)
            return true;
        if ((shift_ == Shift::FromTomorrow) != kind.starts_with("IN_"))
            return false;
        if (shift_ == Shift::FromTomorrow) {
            today_ += days(1);
            return true;
        }
        const auto count = amount();
        if (!count)
            return false;
        const bool weeks = shift_ == Shift::WeeksBefore || shift_ == Shift::WeeksAfter;
        const bool before = shift_ == Shift::DaysBefore || shift_ == Shift::WeeksBefore;
        const days distance(*count * (weeks ? 7 : 1));
        today_ += before ? distance : -distance;
        return true;
    }

    bool readAmount(std::string_view kind) {
        const auto count = amount();
        if (!count)
            return false;
        if (kind == "IN_MONTHS") {
            const year_month_day today = today_;
            const year_month then = year_month(today.year(), today.month()) + months(*count);
            return on(clamped(then.year(), then.month(), static_cast<unsigned>(today.day())));
        }
        if (shift_ == Shift::FromTomorrow)
            return on(today_ + days(*count));
        answer_.kind = kind;
        answer_.amount = *count;
        return true;
    }

    /// The number of a day of a month; 0 where there is none.
    unsigned dayNumber() {
        const std::optional<int> written = number(Role::Day);
        if (written)
            return *written <= 31 ? static_cast<unsigned>(*written) : 0;
        return static_cast<unsigned>(choose(impression_.day));
    }

    bool readDate() {
        const auto ofMonth = static_cast<unsigned>(choose(impression_.month));
        const unsigned number = dayNumber();
        if (number == 0)
            return false;
        if (ofMonth != 0)
            return specific(ofMonth, number, !digits(Role::Day));
        const year_month_day today = today_;
        const unsigned todaysNumber{today.day()};
        if (digits(Role::Year))
            return false;
        if (shift_ != Shift::None) {
            year_month_day date = year_month(today.year(), today.month()) / day(number);
            while (!date.ok() || sys_days(date) < today_)
                date += months(1);
            return on(date);
        }
        // A day without a month that has passed in December would be one of last January.
        if (today.month() == std::chrono::December && number < todaysNumber)
            return specific(1, number, false);
        const bool thisMonth = number >= todaysNumber;
        if (thisMonth && clamped(today.year(), today.month(), number) !=
                             sys_days(today.year() / today.month() / day(number)))
            return false;
        answer_.kind = "SPECIFIC_DATE";
        answer_.day = number;
        return true;
    }

    bool readNumericDate() {
        const std::optional<int> first = number(Role::FirstOfPair);
        const std::optional<int> second = number(Role::SecondOfPair);
        std::optional<int> ofMonth = number(Role::Month);
        std::optional<int> ofDay = number(Role::Day);
        if (first && second) {
            ofMonth = first;
            ofDay = second;
            if (!monthComesFirst(locale_))
                std::swap(ofMonth, ofDay);
        }
        if (!ofMonth || !ofDay)
            return false;
        if (*ofMonth > 12)
            std::swap(ofMonth, ofDay);
        return specific(static_cast<unsigned>(*ofMonth), static_cast<unsigned>(*ofDay), false);
    }

    /// `toItsEnd`: a day that the month has not means its last.
    bool specific(unsigned ofMonth, unsigned number, bool toItsEnd) {
        if (ofMonth < 1 || ofMonth > 12 || number < 1 || number > 31)
            return false;
        const year thisYear = year_month_day(today_).year();
        for (year y = thisYear; y <= thisYear + years(8); ++y) {
            const year_month_day date = toItsEnd ? year_month_day(clamped(y, month(ofMonth), number))
                                                 : year_month_day(y, month(ofMonth), day(number));
            if (!date.ok()) {
                if (ofMonth == 2 && number == 29)
                    continue;
                return false;
            }
            if (sys_days(date) < today_)
                continue;
            // What is farther away than a year cannot be answered.
            if (y > thisYear + years(1) || !yearFits(y))
                return false;
            // A month and a day would mean the first of March of a year that has no such day.
            if (shift_ != Shift::None || (ofMonth == 2 && static_cast<unsigned>(date.day()) == 29))
                return on(date);
            answer_.kind = "SPECIFIC_DATE";
            answer_.month = ofMonth;
            answer_.day = static_cast<unsigned>(date.day());
            return true;
        }
        return false;
    }

    /// Whether a year that the text names is this one.
    bool yearFits(year found) const {
        const auto written = digits(Role::Year);
        if (!written)
            return true;
        const int value = valueOf(*written);
        return static_cast<int>(found) == (written->size() == 4 ? value : 2000 + value);
    }

    bool readDayOfMonth(bool next) {
        const unsigned number = dayNumber();
        if (number == 0)
            return false;
        const year_month_day today = today_;
        const year_month current(today.year(), today.month());
        const auto in = [&](year_month which) { return clamped(which.year(), which.month(), number); };
        const sys_days date = in(next ? current + months(1) : current);
        return on(date >= today_ ? date : in(current + months(1)));
    }

    /// The second Saturday of a month, this one where none is named; the fifth is the last.
    bool readWeekdayOfMonth(weekday wanted) {
        const auto ofMonth = static_cast<unsigned>(choose(impression_.month));
        const auto which = amount(5);
        if (!which)
            return false;
        const auto in = [&](year_month month) {
            return *which < 5 ? sys_days(month / wanted[static_cast<unsigned>(*which)])
                              : sys_days(month / wanted[std::chrono::last]);
        };
        const year_month_day today = today_;
        const year_month current(today.year(), today.month());
        if (ofMonth == 0)
            return on(in(current) >= today_ ? in(current) : in(current + months(1)));
        const year_month named(today.year(), month(ofMonth));
        return on(in(named) >= today_ ? in(named) : in(named + years(1)));
    }

    bool on(sys_days date) {
        const auto distance = (date - today_).count() + (shift_ == Shift::FromTomorrow ? 1 : 0);
        if (distance < 0)
            return false;
        answer_.kind = distance == 0 ? "TODAY" : "IN_DAYS";
        answer_.amount = distance;
        return true;
    }

    const Weights& weights_;
    const std::vector<Token>& tokens_;
    const Impression& impression_;
    const std::string_view locale_;
    sys_days today_; ///< from which the day is read; see readShift
    Shift shift_ = Shift::None;
    std::vector<Role> roles_;
    Answer answer_;
    double score_ = 0;
};

} // namespace

Answer answerTo(const Weights& weights, std::string_view text, const std::vector<Token>& tokens,
                const Impression& impression, const ModelReference& reference) {
    Reading reading(weights, tokens, impression, reference);
    std::optional<Answer> answer = reading.read();
    if (!answer || answer->kind == "NONE" || answer->score < sure) {
        Answer none;
        none.title = text;
        none.score = answer ? answer->score : 0;
        return none;
    }
    answer->title = titleOf(text, tokens, reading.roles());
    return *std::move(answer);
}

} // namespace quillo::classifier
