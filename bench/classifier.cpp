/// The embedded language model: typical texts, texts of 200 characters, and unpacking its weights.
#include "classifier/Answer.h"
#include "classifier/EmbeddedWeights.h"
#include "classifier/Network.h"
#include "classifier/Weights.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <string>

namespace quillo::classifier {
namespace {

void classify(benchmark::State& state, std::span<const std::string> texts) {
    const auto weights = Weights::read(embeddedWeights());
    ModelReference reference;
    reference.locale = "en_US";
    for (auto _ : state) {
        for (const std::string& text : texts) {
            const std::vector<Token> tokens = tokenize(text);
            benchmark::DoNotOptimize(
                answerTo(*weights, text, tokens, look(*weights, text, tokens), reference));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(texts.size()));
    state.counters["us_a_text"] =
        benchmark::Counter(static_cast<double>(state.iterations() * texts.size()) * 1e-6,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void classifyTypicalTexts(benchmark::State& state) {
    static const std::array<std::string, 8> texts = {
        "call mom tmrw 9p",
        "Email Sam early next week",
        "dentist wendsday afternoon",
        "maybe fix the market page",
        "pay rent 3rd of april",
        "water plants every few days",
        "pick up parcel in half an hour",
        "submit report by eod, ask Dana for numbers",
    };
    classify(state, texts);
}
BENCHMARK(classifyTypicalTexts)->Unit(benchmark::kMicrosecond);

void classifyLongTexts(benchmark::State& state) {
    // 200 characters.
    static const std::array<std::string, 1> texts = {
        "remember to bring the signed copies of the march budget, two boxes of markers, the projector and "
        "the extension "
        "cords to the planning meeting with the marketing department at the new office tmrw 9.30 sharp"};
    classify(state, texts);
}
BENCHMARK(classifyLongTexts)->Unit(benchmark::kMicrosecond);

/// What this process has in memory, in bytes.
double residentBytes() {
    std::size_t total = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE));
}

void unpackWeights(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(Weights::read(embeddedWeights()));
    state.counters["bytes"] = static_cast<double>(embeddedWeights().size());
    releaseEmbeddedWeights();
    const double before = residentBytes();
    const auto weights = Weights::read(embeddedWeights());
    releaseEmbeddedWeights();
    state.counters["resident_bytes"] = residentBytes() - before;
}
BENCHMARK(unpackWeights)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillo::classifier
