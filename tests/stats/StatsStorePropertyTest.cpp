// Any history, told a second time slowly and obviously.
#include "stats/StatsStore.h"
#include "stats/StatsWorld.h"
#include "unicode/DateFormat.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::calendarIn;
using support::StatsWorld;
using support::Task;

/// The statistics by the book: days are names from ICU's formatter, streaks are looked for in a line of days
/// that is painted anew each time, records in all completions.
class PlainStatistics {
public:
    void moveTo(const std::string& zone) {
        calendar_ = calendarIn(zone);
        format_ = unicode::DateFormat(zone, "en_US_POSIX");
    }

    void count(const std::string& title, Instant made, Instant at) {
        ++lifetime;
        ++daily[name(at)];
        const std::string oldest = dateDaysBefore(at, 60);
        std::erase_if(daily, [&oldest](const auto& day) { return day.first < oldest; });
        if (at - made >= 0)
            records.push_back({title, at - made, at});

        std::vector<Award> deserved;
        if (at - made < 60)
            deserved.push_back(Award::lightningFast);
        if (at - made < 300)
            deserved.push_back(Award::quickDraw);
        if (at - made > 604800)
            deserved.push_back(Award::longGame);
        if (streak(at) >= 7)
            deserved.push_back(Award::weekLongWinner);
        if (streak(at) >= 30)
            deserved.push_back(Award::monthlyMaven);
        const int hour = std::stoi(format_.byPattern(at, u"H"));
        if (hour <= 7)
            deserved.push_back(Award::earlyBird);
        if (hour >= 22)
            deserved.push_back(Award::nightOwl);
        bool news = false;
        for (const Award award : deserved) {
            if (earned.insert(award).second) {
                newlyEarned.insert(award);
                news = true;
            }
        }
        posts += news;
    }

    std::optional<SpeedRecord> fastest() const {
        const auto found = std::min_element(records.begin(), records.end(), isFaster);
        return found == records.end() ? std::nullopt : std::optional(*found);
    }
    std::optional<SpeedRecord> slowest() const {
        const auto found = std::max_element(records.begin(), records.end(), isFaster);
        if (found == records.end())
            return std::nullopt;
        return *std::find_if(records.begin(), records.end(), [&](const SpeedRecord& record) {
            return record.durationSeconds == found->durationSeconds;
        });
    }

    /// The last sixty days, today first: x for one with completions, a blank for one without. A day that the
    /// zone did not have is there only if it was counted in another.
    std::string painted(Instant now) const {
        std::string line;
        for (int back = 0; back < 60; ++back) {
            const std::string day = dateDaysBefore(now, back);
            if (daily.contains(day))
                line += 'x';
            else if (name(noonDaysBefore(now, back)) == day)
                line += ' ';
        }
        return line;
    }
    std::int64_t streak(Instant now) const {
        std::string line = painted(now);
        line.erase(0, line.find_first_not_of(' '));
        return static_cast<std::int64_t>(line.substr(0, line.find(' ')).size());
    }
    std::int64_t bestStreak(Instant now) const {
        const std::string line = painted(now);
        std::size_t length = 60;
        while (line.find(std::string(length, 'x')) == std::string::npos)
            --length;
        return static_cast<std::int64_t>(length);
    }
    std::int64_t week(Instant now) const {
        std::int64_t sum = 0;
        for (const auto& [day, completions] : daily)
            sum += day >= dateDaysBefore(now, 6) ? completions : 0;
        return sum;
    }
    std::int64_t on(Instant instant) const {
        const auto found = daily.find(name(instant));
        return found == daily.end() ? 0 : found->second;
    }

    std::int64_t lifetime = 0;
    std::map<std::string, std::int64_t, std::less<>> daily;
    std::vector<SpeedRecord> records;
    std::set<Award> earned;
    std::set<Award> newlyEarned;
    int posts = 0;

private:
    static bool isFaster(const SpeedRecord& left, const SpeedRecord& right) {
        return left.durationSeconds < right.durationSeconds;
    }
    unicode::CivilDate dayBefore(Instant instant, int days) const {
        unicode::CivilDate date = calendar_.civilTime(instant).date;
        date.day -= days; // Calendars take it for a day of an earlier month where it is below 1.
        return date;
    }
    Instant noonDaysBefore(Instant instant, int days) const {
        return calendar_.instant(dayBefore(instant, days), {12, 0});
    }
    /// A name on paper: the zone may have skipped that day.
    std::string dateDaysBefore(Instant instant, int days) const {
        return utcFormat_.byPattern(utcCalendar_.instant(dayBefore(instant, days), {12, 0}), u"yyyy-MM-dd");
    }
    std::string name(Instant instant) const { return format_.byPattern(instant, u"yyyy-MM-dd"); }

    const unicode::CivilCalendar utcCalendar_ = calendarIn("UTC");
    const unicode::DateFormat utcFormat_{"UTC", "en_US_POSIX"};
    unicode::CivilCalendar calendar_ = calendarIn("UTC");
    unicode::DateFormat format_{"UTC", "en_US_POSIX"};
};

rc::Gen<double> pauses() {
    const auto seconds = [](int from, int to, double unit) {
        return rc::gen::map(rc::gen::inRange(from, to), [unit](int count) { return count * unit; });
    };
    return rc::gen::weightedOneOf<double>({{3, seconds(0, 400, 0.75)},
                                           {3, seconds(0, 48, 1799.5)},
                                           {8, rc::gen::just(86400.0)},
                                           {2, seconds(0, 70, 86400)},
                                           {1, seconds(-3, 0, 86400)}});
}

RC_GTEST_PROP(StatsStoreProperty, CountsWhatASlowModelCounts, ()) {
    const std::vector<std::string> zones = {"Europe/Berlin",      "America/New_York", "Australia/Lord_Howe",
                                            "America/Sao_Paulo",  "Asia/Beirut",      "Pacific/Apia",
                                            "Pacific/Kiritimati", "Asia/Pyongyang",   "Asia/Kathmandu"};
    StatsWorld world;
    PlainStatistics plain;
    int posts = 0;
    const Connection listening = world.notifications.observe(notifications::awardsEarned, [&] { ++posts; });
    std::optional<StatsStore> store(std::in_place, world.dependencies());
    // Close to clock changes, the end of a year, a day that Apia skipped.
    const std::vector<unicode::CivilDate> starts = {{2025, 3, 20}, {2025, 10, 20}, {2018, 10, 28},
                                                    {2018, 4, 25}, {2024, 12, 25}, {2011, 12, 20},
                                                    {2024, 2, 20}};
    world.goTo(*rc::gen::elementOf(starts));
    const auto moveTo = [&](const std::string& zone) {
        world.calendar = calendarIn(zone);
        plain.moveTo(zone);
    };
    moveTo(*rc::gen::elementOf(zones));

    bool enabled = true;
    // Somebody who completes a task a day comes to see long streaks.
    const rc::Gen<double> pause = *rc::gen::inRange(0, 3) == 0 ? rc::gen::just(86400.0) : pauses();
    const int steps = *rc::gen::inRange(1, 80);
    for (int step = 0; step < steps; ++step) {
        world.clock.advance(*pause);
        const Instant now = world.clock.now();
        const int what = *rc::gen::inRange(0, 40);
        if (what == 0) {
            moveTo(*rc::gen::elementOf(zones));
        } else if (what == 1) {
            enabled = !enabled;
            world.preferences.set(preference_keys::statsEnabled, enabled);
        } else if (what == 2) {
            store->drain();
            store.emplace(world.dependencies());
            plain.newlyEarned.clear();
        } else if (what == 3 && step % 4 == 0) {
            store->reset();
            plain.lifetime = 0;
            plain.daily.clear();
            plain.records.clear();
            plain.earned.clear();
            plain.newlyEarned.clear();
        } else {
            const double duration = *rc::gen::element(-5.0, 0.0, 59.5, 60.0, 299.5, 300.0, 3600.0, 86400.0,
                                                      604800.0, 604800.5, 1e7);
            const TodoItem item = Task("step " + std::to_string(step)).made(now + -duration).done(now);
            store->recordCompletion(item, now);
            if (enabled)
                plain.count(item.title, item.createdAt, now);
        }

        RC_ASSERT(store->lifetimeCompletions().get() == plain.lifetime);
        RC_ASSERT(store->dailyCounts().get() == plain.daily);
        RC_ASSERT(store->fastest().get() == plain.fastest());
        RC_ASSERT(store->slowest().get() == plain.slowest());
        RC_ASSERT(store->earnedAwards().get() == plain.earned);
        RC_ASSERT(store->newlyEarnedThisSession().get() == plain.newlyEarned);
        RC_ASSERT(posts == plain.posts);
        RC_ASSERT(store->currentStreak() == plain.streak(now));
        RC_ASSERT(store->bestStreak() == plain.bestStreak(now));
        RC_ASSERT(store->todayCount() == plain.on(now));
        RC_ASSERT(store->thisWeekCount() == plain.week(now));
    }
}

} // namespace
} // namespace quillo
