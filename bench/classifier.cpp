/// The embedded language model: typical texts, texts of 200 characters, and unpacking its weights.
#include "classifier/Answer.h"
#include "classifier/EmbeddedWeights.h"
#include "classifier/Network.h"
#include "classifier/Weights.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/wait.h>
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

/// What this process has in memory that no file has, in bytes.
double anonymousBytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("RssAnon:"))
            return std::stod(line.substr(line.find(':') + 1)) * 1024;
    }
    return 0;
}

/// The memory that having the model, and asking it once, takes of a process that has never done so: a new
/// one, as this one keeps what it once had.
double bytesOfModel() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        return 0;
    const pid_t child = ::fork();
    if (child == 0) {
        ::malloc_trim(0);
        const double before = anonymousBytes();
        const auto weights = Weights::read(embeddedWeights());
        const std::string text = "call mom tmrw 9p";
        const std::vector<Token> tokens = tokenize(text);
        benchmark::DoNotOptimize(answerTo(*weights, text, tokens, look(*weights, text, tokens), {}));
        releaseEmbeddedWeights();
        const double taken = anonymousBytes() - before;
        ::_exit(::write(ends[1], &taken, sizeof taken) == sizeof taken ? 0 : 1);
    }
    ::close(ends[1]);
    double taken = 0;
    if (::read(ends[0], &taken, sizeof taken) != sizeof taken)
        taken = 0;
    ::close(ends[0]);
    ::waitpid(child, nullptr, 0);
    return taken;
}

void unpackWeights(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(Weights::read(embeddedWeights()));
    state.counters["bytes"] = static_cast<double>(embeddedWeights().size());
    state.counters["resident_bytes"] = bytesOfModel();
}
BENCHMARK(unpackWeights)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillo::classifier
