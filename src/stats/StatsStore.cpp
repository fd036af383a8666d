#include "stats/StatsStore.h"

#include "stats/Awards.h"
#include "stats/LocalDay.h"
#include "stats/Ranks.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace quillo {

namespace {

using std::chrono::days;

/// The sum of two counts, or the largest count if that is too much.
std::int64_t plus(std::int64_t left, std::int64_t right) {
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();
    return right > largest - left ? largest : left + right;
}

std::int64_t countOn(const DailyCounts& counts, Day day) {
    const auto found = counts.find(dayKey(day));
    return found == counts.end() ? 0 : found->second;
}

} // namespace

StatsStore::StatsStore(const StatsStoreDependencies& dependencies)
    : with_(dependencies), persistence_(with_.preferences, with_.keepDamaged) {
    publish(persistence_.load());
}

bool StatsStore::isEnabled() const {
    return with_.preferences.boolean(preference_keys::statsEnabled).value_or(true);
}

void StatsStore::recordCompletion(const TodoItem& item, Instant completedAt) {
    if (!isEnabled())
        return;
    lifetimeCompletions_.set(plus(lifetimeCompletions_.get(), 1));
    countDay(completedAt);
    const double duration = completedAt - item.createdAt;
    if (duration >= 0)
        keepRecords({item.title, duration, completedAt});
    std::set<Award> newAwards = earnAwards(duration, completedAt);
    save();

    if (newAwards.empty())
        return;
    newAwards.insert(newlyEarnedThisSession_.get().begin(), newlyEarnedThisSession_.get().end());
    newlyEarnedThisSession_.set(std::move(newAwards));
    with_.notifications.post(notifications::awardsEarned);
}

void StatsStore::countDay(Instant completedAt) {
    const Day day = localDay(with_.calendar, completedAt);
    DailyCounts counts = dailyCounts_.get();
    std::int64_t& count = counts[dayKey(day)];
    count = plus(count, 1);
    counts.erase(counts.begin(), counts.lower_bound(dayKey(day - days(windowDays))));
    dailyCounts_.set(std::move(counts));
}

void StatsStore::keepRecords(const SpeedRecord& record) {
    const auto& fastest = fastest_.get();
    if (!fastest || record.durationSeconds < fastest->durationSeconds)
        fastest_.set(record);
    const auto& slowest = slowest_.get();
    if (!slowest || slowest->durationSeconds < record.durationSeconds)
        slowest_.set(record);
}

/// Returns those that were not earned before.
std::set<Award> StatsStore::earnAwards(double durationSeconds, Instant completedAt) {
    const int hour = with_.calendar.civilTime(completedAt).time.hour;
    std::set<Award> newAwards;
    for (const Award award : awardsFor({durationSeconds, hour, currentStreak()})) {
        if (!earnedAwards_.get().contains(award))
            newAwards.insert(award);
    }
    std::set<Award> earned = newAwards;
    earned.insert(earnedAwards_.get().begin(), earnedAwards_.get().end());
    earnedAwards_.set(std::move(earned));
    return newAwards;
}

void StatsStore::save() {
    // Of saves that wait one behind the other only the last one matters.
    constexpr SerialQueue::ReplaceableKind saving = 1;
    queue_.postReplacing(
        saving,
        [&persistence = persistence_,
         statistics = Statistics{lifetimeCompletions_.get(), fastest_.get(), slowest_.get(),
                                 dailyCounts_.get(), earnedAwards_.get()}] { persistence.save(statistics); });
}

std::int64_t StatsStore::streak(bool best) const {
    const Day today = localDay(with_.calendar, with_.clock.now());
    std::int64_t run = 0;
    std::int64_t longest = 0;
    for (Day day = today; day > today - days(windowDays); day -= days(1)) {
        if (countOn(dailyCounts_.get(), day) > 0) {
            longest = std::max(longest, ++run);
        } else if (run > 0 && hasDay(with_.calendar, day)) {
            if (!best)
                return run;
            run = 0;
        }
    }
    return best ? longest : run;
}

std::int64_t StatsStore::thisWeekCount() const {
    const Day start = localDay(with_.calendar, with_.clock.now()) - days(6);
    std::int64_t sum = 0;
    for (const auto& [key, count] : dailyCounts_.get()) {
        if (const std::optional<Day> day = parseDayKey(key); day && *day >= start)
            sum = plus(sum, count);
    }
    return sum;
}

std::int64_t StatsStore::todayCount() const {
    return countOn(dailyCounts_.get(), localDay(with_.calendar, with_.clock.now()));
}

std::optional<double> StatsStore::averageSeconds() const {
    const auto& fastest = fastest_.get();
    const auto& slowest = slowest_.get();
    if (!fastest || !slowest)
        return std::nullopt;
    return (fastest->durationSeconds + slowest->durationSeconds) * 0.5;
}

StatisticsSummary StatsStore::summary() const {
    StatisticsSummary summary;
    summary.enabled = isEnabled();
    summary.today = todayCount();
    summary.thisWeek = thisWeekCount();
    summary.allTime = lifetimeCompletions_.get();
    summary.streak = currentStreak();
    summary.bestStreak = bestStreak();
    summary.averageSeconds = averageSeconds();
    summary.rank = rankProgress(summary.allTime).current.title;
    summary.progress = progressLine(summary.allTime);
    summary.fastest = fastest_.get();
    summary.slowest = slowest_.get();
    summary.awards.assign(earnedAwards_.get().begin(), earnedAwards_.get().end());
    return summary;
}

void StatsStore::reset() {
    queue_.post([&persistence = persistence_] { persistence.removeAll(); });
    publish({});
    newlyEarnedThisSession_.set({});
}

void StatsStore::publish(Statistics statistics) {
    lifetimeCompletions_.set(statistics.lifetimeCompletions);
    fastest_.set(std::move(statistics.fastest));
    slowest_.set(std::move(statistics.slowest));
    dailyCounts_.set(std::move(statistics.dailyCounts));
    earnedAwards_.set(std::move(statistics.earnedAwards));
}

} // namespace quillo
