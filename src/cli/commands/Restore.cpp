#include "base/Clock.h"
#include "base/DataFolder.h"
#include "cli/Session.h"
#include "cli/Terminal.h"
#include "cli/commands/Change.h"
#include "cli/commands/Commands.h"
#include "store/Backups.h"
#include "store/TaskList.h"
#include "unicode/DateFormat.h"
#include "unicode/SystemPlace.h"
#include "unicode/Text.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace quillo::cli {

namespace {

std::string counted(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " task" : " tasks");
}

/// "12 tasks, 3 of them done".
std::string contentsOf(const TaskList& list) {
    const std::size_t done = list.doneCount();
    return counted(list.size()) + (done > 0 ? ", " + std::to_string(done) + " of them done" : "");
}

/// "; gone since: Call mom, Buy milk, Pay rent, and 2 more": what someone looks for who looks here.
std::string goneSince(const TaskList& earlier, const TaskList& present) {
    constexpr std::size_t mostNamed = 3;
    std::string titles;
    std::size_t gone = 0;
    for (const TodoItem& item : earlier) {
        if (present.indexOf(item.id))
            continue;
        if (++gone <= mostNamed)
            titles += (gone > 1 ? ", " : "; gone since: ") + onOneLine(item.title);
    }
    return gone > mostNamed ? titles + ", and " + std::to_string(gone - mostNamed) + " more" : titles;
}

ExitCode listEarlier() {
    const auto folder = dataFolder();
    if (!folder)
        return failed(folder.error());
    // First, as what it takes over from other computers makes for one list more. Earlier lists are shown also
    // where the present one is lost.
    const auto session = Session::look();
    const SystemClock clock;
    const Backups backups(*folder, clock);
    const unicode::DateFormat dates(unicode::systemTimeZone(), unicode::systemLocale());
    std::vector<std::string> times;
    int timeColumns = 0;
    for (const UtcMilliseconds time : backups.listTimes()) {
        const std::chrono::duration<double> since1970 = time.time_since_epoch();
        times.push_back(dates.dateAndTime(Instant::fromUnixSeconds(since1970.count())));
        timeColumns = std::max(timeColumns, unicode::displayWidth(times.back()));
    }
    if (times.empty() && isatty(STDOUT_FILENO))
        std::puts("No earlier list is kept.");

    const Terminal terminal = Terminal::ofStandardOutput();
    for (std::size_t number = 1; number <= times.size(); ++number) {
        std::string& time = times[number - 1];
        time.append(static_cast<std::size_t>(timeColumns - unicode::displayWidth(time)), ' ');
        std::string line = (number < 10 ? " " : "") + std::to_string(number) + "  " + time + "  ";
        const auto stored = backups.list(number);
        if (const auto list = stored ? TaskList::decode(*stored) : std::nullopt)
            line += contentsOf(*list) + (session ? goneSince(*list, (*session)->items()) : "");
        else
            line += "cannot be read";
        std::puts((terminal.columns > 0 ? fitted(line, terminal.columns) : line).c_str());
    }
    return ExitCode::Done;
}

void printPresent() {
    if (const auto session = Session::look())
        std::puts(contentsOf((*session)->items()).c_str());
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
    return change(control::Restore{which}, [](const Tasks&) { printPresent(); });
}

} // namespace quillo::cli
