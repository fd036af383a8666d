/// Understanding 3,000 typed lines, beside one plain run of the same compiled patterns over them: the least
/// that a parser without screening would pay.
#include "parser/ParserService.h"
#include "parser/TemporalHint.h"
#include "parser/rules/Families.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace quillo {
namespace {

const std::vector<std::string>& lines() {
    static const std::vector<std::string> all = [] {
        std::ifstream file(QUILLO_BENCH_FOLDER "/data/lines.txt");
        std::vector<std::string> read;
        for (std::string line; std::getline(file, line);)
            read.push_back(line);
        if (read.size() != 3000)
            std::abort();
        return read;
    }();
    return all;
}

void parse3000Lines(benchmark::State& state) {
    const auto calendar = unicode::CivilCalendar::create("Europe/Berlin", "en_US");
    const unicode::DateFormat format("Europe/Berlin", "en_US");
    const ParserService parser(*calendar, format);
    const Instant now = Instant::fromUnixSeconds(1741078800);
    std::size_t dated = 0;
    std::size_t withoutHint = 0;
    for (auto _ : state) {
        dated = withoutHint = 0;
        for (const std::string& line : lines()) {
            const Parse parse = parser.parse(line, now);
            dated += parse.path == ParsePath::Rules;
            withoutHint += !parse.hint;
            benchmark::DoNotOptimize(parse);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(lines().size()));
    state.counters["dated"] = static_cast<double>(dated);
    state.counters["without_hint"] = static_cast<double>(withoutHint);
}
BENCHMARK(parse3000Lines)->Unit(benchmark::kMillisecond);

template <class Found>
void collect(std::vector<unicode::Regex>& patterns, const Family<Found>& family) {
    for (const Rule<Found>& rule : family.rules)
        patterns.emplace_back(rule.pattern.source(), rule.pattern.sensitivity());
}

void plainPatterns3000Lines(benchmark::State& state) {
    std::vector<unicode::Regex> patterns;
    for (const Pattern& pattern : temporalHintPatterns())
        patterns.emplace_back(pattern.source(), pattern.sensitivity());
    collect(patterns, rules::clockTimes);
    collect(patterns, rules::periodWords);
    for (const auto* family : {&rules::relativeOffsets, &rules::daysFromDay, &rules::monthDates,
                               &rules::ordinalDays, &rules::dayWords, &rules::weekdays})
        collect(patterns, *family);
    std::vector<std::u16string> texts;
    for (const std::string& line : lines())
        texts.push_back(unicode::toUtf16(line));
    for (auto _ : state) {
        for (const std::u16string& text : texts) {
            for (const unicode::Regex& pattern : patterns)
                benchmark::DoNotOptimize(pattern.search(text));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(texts.size()));
    state.counters["patterns"] = static_cast<double>(patterns.size());
}
BENCHMARK(plainPatterns3000Lines)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillo
