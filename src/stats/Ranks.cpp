#include "stats/Ranks.h"

#include <array>

namespace quillo {

namespace {

constexpr std::array ladder{Rank{"Tadpole", 1},    Rank{"Hopper", 5},         Rank{"Leaper", 25},
                            Rank{"Bullfrog", 100}, Rank{"Croak Master", 500}, Rank{"Pondsmith", 1000}};

} // namespace

RankProgress rankProgress(std::int64_t completions) {
    std::size_t current = 0;
    while (current + 1 < ladder.size() && ladder[current + 1].reachedAt <= completions)
        ++current;
    if (current + 1 == ladder.size())
        return {ladder[current], std::nullopt, 0};
    const Rank& next = ladder[current + 1];
    return {ladder[current], next, next.reachedAt - completions};
}

std::string progressLine(std::int64_t completions) {
    const RankProgress progress = rankProgress(completions);
    std::string line = std::to_string(completions) + " tasks completed · ";
    if (progress.next)
        line.append(std::to_string(progress.missing)).append(" more to reach ").append(progress.next->title);
    else
        line.append("top rank reached 👑");
    return line;
}

} // namespace quillo
