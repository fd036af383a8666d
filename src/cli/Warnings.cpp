#include "cli/Warnings.h"

#include "base/Log.h"
#include "cli/Terminal.h"

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace quillo::cli {

namespace {

constexpr std::size_t mostKept = 20;

struct Kept {
    std::mutex mutex; ///< the store's and the preferences' threads log as well
    std::vector<std::string> lines;
};

Kept& kept() {
    static Kept instance;
    return instance;
}

} // namespace

void holdWarnings() {
    setLogSink([](std::string_view line) {
        const std::lock_guard lock(kept().mutex);
        if (kept().lines.size() < mostKept)
            kept().lines.emplace_back(line);
    });
}

std::string heldWarningsBeside(std::string_view error) {
    const std::lock_guard lock(kept().mutex);
    std::string beside;
    for (const std::string& line : kept().lines) {
        if (!line.starts_with(error))
            beside += (beside.empty() ? " (" : "; ") + line;
    }
    return beside.empty() ? beside : beside + ")";
}

void showWarningsAtOnce() {
    setLogSink(printError);
    for (const std::string& line : std::exchange(kept().lines, {}))
        printError(line);
}

} // namespace quillo::cli
