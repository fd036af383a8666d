#include "base/Clock.h"
#include "base/DataFolder.h"
#include "cli/commands/Change.h"
#include "cli/commands/Commands.h"
#include "store/Backups.h"
#include "store/TaskList.h"
#include "unicode/DateFormat.h"
#include "unicode/SystemPlace.h"

#include <unistd.h>

#include <charconv>
#include <chrono>
#include <cstdio>
#include <string>

namespace quillo::cli {

namespace {

std::string counted(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " task" : " tasks");
}

/// "12 tasks, 3 of them done".
std::string contentsOf(const Result<Data>& stored) {
    const auto list = stored ? TaskList::decode(*stored) : std::nullopt;
    if (!list)
        return "cannot be read";
    const std::size_t done = list->doneCount();
    return counted(list->size()) + (done > 0 ? ", " + std::to_string(done) + " of them done" : "");
}

ExitCode listEarlier() {
    const auto folder = dataFolder();
    if (!folder)
        return failed(folder.error());
    const SystemClock clock;
    const Backups backups(*folder, clock);
    const unicode::DateFormat dates(unicode::systemTimeZone(), unicode::systemLocale());
    std::size_t number = 0;
    for (const UtcMilliseconds time : backups.listTimes()) {
        ++number;
        const std::chrono::duration<double> since1970 = time.time_since_epoch();
        std::printf("%2zu  %s  %s\n", number,
                    dates.dateAndTime(Instant::fromUnixSeconds(since1970.count())).c_str(),
                    contentsOf(backups.list(number)).c_str());
    }
    if (number == 0 && isatty(STDOUT_FILENO))
        std::puts("No earlier list is kept.");
    return ExitCode::Done;
}

} // namespace

ExitCode restore(const Arguments& arguments) {
    if (arguments.words().empty())
        return listEarlier();
    const std::string& word = arguments.words().front();
    std::size_t which = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), which);
    if (error != std::errc() || end != word.data() + word.size())
        return failed({"no earlier list \"" + word + "\""});
    return change(control::Restore{which}, [](const Tasks&) {});
}

} // namespace quillo::cli
