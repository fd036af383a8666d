#include "store/Backups.h"

#include "base/DurableFile.h"
#include "base/Log.h"
#include "base/UtcTime.h"
#include "model/TodoItemJson.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fstream>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

namespace quillo {

namespace {

using std::filesystem::path;

constexpr std::string_view listEnding = ".json";

/// `purpose` tells apart what may be written at the same time.
bool keep(const path& folder, const std::string& name, std::string_view purpose, std::string_view bytes) {
    const path temporary = folder / std::string(".unfinished-").append(purpose);
    if (writeDurably(folder, name, temporary, bytes))
        return true;
    const std::string reason = std::generic_category().message(errno);
    ::unlink(temporary.c_str());
    log("could not write " + (folder / name).string() + ": " + reason);
    return false;
}

/// The times of the lists in the folder, oldest first. Files of other names are not ours.
std::vector<UtcMilliseconds> keptTimes(const path& folder) {
    std::vector<UtcMilliseconds> times;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const path name = entry->path().filename();
        const auto time = parseFileNameTime(name.stem().native());
        if (time && name.extension() == listEnding)
            times.push_back(*time);
    }
    std::sort(times.begin(), times.end());
    return times;
}

std::string listName(UtcMilliseconds time) {
    return fileNameTime(time).append(listEnding);
}

} // namespace

Backups::Backups(path dataFolder, const Clock& clock) : dataFolder_(std::move(dataFolder)), clock_(clock) {}

bool Backups::keepList(std::string_view bytes) {
    const path folder = dataFolder_ / "backups";
    ::mkdir(folder.c_str(),
            0700); // Usually there already; where it cannot be made, writing fails and says so.

    std::vector<UtcMilliseconds> times = keptTimes(folder);
    UtcMilliseconds time = floorToMillisecond(clock_.now());
    if (!times.empty())
        time = std::max(time, times.back() + std::chrono::milliseconds(1));
    if (!keep(folder, listName(time), "list", bytes))
        return false;

    times.push_back(time);
    for (std::size_t oldest = 0; oldest + keptLists < times.size(); ++oldest)
        ::unlink((folder / listName(times[oldest])).c_str());
    return true;
}

std::vector<UtcMilliseconds> Backups::listTimes() const {
    std::vector<UtcMilliseconds> times = keptTimes(dataFolder_ / "backups");
    std::reverse(times.begin(), times.end());
    return times;
}

Result<Data> Backups::list(std::size_t which) const {
    const std::vector<UtcMilliseconds> times = listTimes();
    if (which < 1 || which > times.size())
        return Error{"no earlier list " + std::to_string(which) + "; " +
                     (times.empty() ? "none is"
                                    : std::to_string(times.size()) + (times.size() == 1 ? " is" : " are")) +
                     " kept"};
    const path file = dataFolder_ / "backups" / listName(times[which - 1]);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (!error && size > largestStoredList)
        return Error{file.string() + " is too large for a list"};
    std::ifstream input(file, std::ios::binary);
    std::string bytes(error ? 0 : size, '\0');
    if (error || !input.read(bytes.data(), static_cast<std::streamsize>(bytes.size())))
        return Error{"cannot read " + file.string()};
    return Data(std::move(bytes));
}

bool Backups::keepDamaged(std::string_view key, std::string_view bytes) {
    UtcMilliseconds time = floorToMillisecond(clock_.now());
    const auto name = [&time, key] { return "damaged-" + fileNameTime(time) + "-" + std::string(key); };
    std::error_code ignored;
    while (std::filesystem::exists(dataFolder_ / name(), ignored))
        time += std::chrono::milliseconds(1);
    const bool kept = keep(dataFolder_, name(), key, bytes);
    if (kept)
        log("what could not be read of " + std::string(key) + " is kept as " +
            (dataFolder_ / name()).string());
    return kept;
}

} // namespace quillo
