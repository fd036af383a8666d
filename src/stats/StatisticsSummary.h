/// The statistics as they are shown, at one moment.
#pragma once

#include "model/Award.h"
#include "model/SpeedRecord.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillo {

/// Numbers are bare, for whoever shows them to word: DurationText.h writes durations and streaks, Awards.h
/// has the awards' texts, Ranks.h the parts of the progress line.
struct StatisticsSummary {
    bool enabled = true;
    std::int64_t today = 0;
    std::int64_t thisWeek = 0;
    std::int64_t allTime = 0;
    std::int64_t streak = 0;              ///< days
    std::int64_t bestStreak = 0;          ///< days
    std::optional<double> averageSeconds; ///< absent before the first record
    std::string_view rank;                ///< title
    std::string progress;                 ///< line
    std::optional<SpeedRecord> fastest;
    std::optional<SpeedRecord> slowest;
    std::vector<Award> awards; ///< the earned ones, in the order of their declaration
};

} // namespace quillo
