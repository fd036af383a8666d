#include "stats/StatsPersistence.h"

#include "base/Log.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace quillo {

StatsPersistence::StatsPersistence(Preferences& preferences, KeepDamaged keepDamaged)
    : preferences_(preferences), keepDamaged_(std::move(keepDamaged)) {}

Statistics StatsPersistence::load() {
    using namespace preference_keys;
    Statistics statistics;
    statistics.lifetimeCompletions =
        std::max<std::int64_t>(0, preferences_.integer(statsLifetime).value_or(0));
    statistics.fastest = read(statsFastest, decodeSpeedRecord);
    statistics.slowest = read(statsSlowest, decodeSpeedRecord);
    statistics.dailyCounts = read(statsDaily, decodeDailyCounts).value_or(DailyCounts());
    statistics.earnedAwards = read(statsAwards, decodeAwards).value_or(std::set<Award>());
    return statistics;
}

template <class T>
std::optional<T> StatsPersistence::read(std::string_view key, std::optional<T> (*decode)(std::string_view)) {
    const std::optional<Data> data = preferences_.data(key);
    if (!data)
        return std::nullopt;
    std::optional<T> value = decode(data->bytes());
    if (!value) {
        log("the preferences hold something unreadable under " + std::string(key));
        damaged_.insert_or_assign(std::string(key), *data);
    }
    return value;
}

void StatsPersistence::save(const Statistics& statistics) {
    using namespace preference_keys;
    std::vector<Change> changes{{std::string(statsLifetime), statistics.lifetimeCompletions}};
    const auto write = [&](std::string_view key, std::optional<std::string> bytes) {
        if (bytes && mayWrite(key))
            changes.push_back({std::string(key), Data(*std::move(bytes))});
    };
    if (statistics.fastest)
        write(statsFastest, encodeSpeedRecord(*statistics.fastest));
    if (statistics.slowest)
        write(statsSlowest, encodeSpeedRecord(*statistics.slowest));
    write(statsDaily, encodeDailyCounts(statistics.dailyCounts));
    write(statsAwards, encodeAwards(statistics.earnedAwards));
    preferences_.apply(std::move(changes));
}

void StatsPersistence::removeAll() {
    using namespace preference_keys;
    damaged_.clear();
    std::vector<Change> changes;
    for (const std::string_view key : {statsLifetime, statsFastest, statsSlowest, statsDaily, statsAwards})
        changes.push_back({std::string(key), std::nullopt});
    preferences_.apply(std::move(changes));
}

bool StatsPersistence::mayWrite(std::string_view key) {
    const auto found = damaged_.find(key);
    if (found == damaged_.end())
        return true;
    if (keepDamaged_ && !keepDamaged_(key, found->second.bytes()))
        return false;
    damaged_.erase(found);
    return true;
}

} // namespace quillo
