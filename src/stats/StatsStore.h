/// The owner of the completion statistics.
#pragma once

#include "base/Clock.h"
#include "base/Executor.h"
#include "base/NotificationCenter.h"
#include "base/Observable.h"
#include "base/SerialQueue.h"
#include "model/TodoItem.h"
#include "ports/Preferences.h"
#include "stats/StatisticsSummary.h"
#include "stats/StatsPersistence.h"
#include "unicode/CivilCalendar.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

namespace quillo {

namespace notifications {

/// Posted once after a completion that earned awards not earned before; newlyEarnedThisSession has them.
inline constexpr std::string_view awardsEarned = "Quillo.AwardsEarned";

} // namespace notifications

/// What the store works with; all of it outlives the store.
struct StatsStoreDependencies {
    Preferences& preferences;
    const Clock& clock;
    const unicode::CivilCalendar& calendar; ///< asked anew each time: its owner may assign it another zone
    NotificationCenter& notifications;
    StatsPersistence::KeepDamaged keepDamaged = nullptr; ///< called on the store's queue
};

/// One a process, for the whole run. Counts only grow, until reset: reopening a task is not reported. Every
/// completion ends in a save in the background, which it does not wait for.
///
/// Days are those of the user's zone at the time. Streaks look back `windowDays` days, and counts older than
/// that go. A count that 64 bits cannot hold stays at the largest they can: only foreign values get there.
///
/// Belongs to the main thread.
class StatsStore {
public:
    /// How many days back a day is remembered; as many days, today the last, can make a streak.
    static constexpr int windowDays = 60;

    /// Loads what is stored; a value that cannot be read counts as absent.
    explicit StatsStore(const StatsStoreDependencies& dependencies);

    /// Whether completions are counted. The preference decides, each time.
    bool isEnabled() const;

    const Observable<std::int64_t>& lifetimeCompletions() const { return lifetimeCompletions_; }
    const Observable<std::optional<SpeedRecord>>& fastest() const { return fastest_; }
    const Observable<std::optional<SpeedRecord>>& slowest() const { return slowest_; }
    const Observable<DailyCounts>& dailyCounts() const { return dailyCounts_; }
    const Observable<std::set<Award>>& earnedAwards() const { return earnedAwards_; }

    /// The awards earned since the program started; not stored.
    const Observable<std::set<Award>>& newlyEarnedThisSession() const { return newlyEarnedThisSession_; }

    /// Counts the completion of a task; does nothing while statistics are off. A task made after its
    /// completion breaks no record, but counts as quick for the awards.
    void recordCompletion(const TodoItem& item, Instant completedAt);

    /// The length in days of the latest run of days with completions. Empty days after it, today for one, do
    /// not end it, nor does a day that the zone skipped.
    std::int64_t currentStreak() const { return streak(false); }

    /// The length in days of the longest such run.
    std::int64_t bestStreak() const { return streak(true); }

    /// Completions of the last seven days, today included.
    std::int64_t thisWeekCount() const;

    std::int64_t todayCount() const;

    /// Halfway between the two records; absent without them.
    std::optional<double> averageSeconds() const;

    StatisticsSummary summary() const;

    /// Forgets everything, here and in the preferences, except for whether statistics are on.
    void reset();

    /// Calls `told` once, from the persistence queue, when everything saved before the call has been handed
    /// to the preferences.
    void whenSaved(Work told) { queue_.post(std::move(told)); }

    /// Returns when everything saved before the call has been handed to the preferences.
    void drain() { queue_.drain(); }

private:
    void publish(Statistics statistics);
    void countDay(Instant completedAt);
    void keepRecords(const SpeedRecord& record);
    std::set<Award> earnAwards(double durationSeconds, Instant completedAt);
    void save();
    std::int64_t streak(bool best) const;

    const StatsStoreDependencies with_;
    Observable<std::int64_t> lifetimeCompletions_;
    Observable<std::optional<SpeedRecord>> fastest_;
    Observable<std::optional<SpeedRecord>> slowest_;
    Observable<DailyCounts> dailyCounts_;
    Observable<std::set<Award>> earnedAwards_;
    Observable<std::set<Award>> newlyEarnedThisSession_;
    StatsPersistence persistence_; ///< once loaded, the queue's alone
    SerialQueue queue_{
        "Quillo.StatsStore.persist"}; ///< last, so that it is drained before what it works on goes
};

} // namespace quillo
