#include "base/Clock.h"
#include "cli/Session.h"
#include "cli/TaskTable.h"
#include "cli/commands/Commands.h"
#include "model/TodoItemJson.h"
#include "unicode/DateFormat.h"
#include "unicode/SystemPlace.h"

#include <unistd.h>

#include <cstdio>

namespace quillo::cli {

ExitCode list(const Arguments& arguments) {
    const bool all = arguments.has("all");
    const bool done = arguments.has("done");
    const auto session = Session::look();
    if (!session)
        return failed(session.error());

    std::vector<control::NumberedItem> tasks;
    std::size_t number = 0;
    for (const TodoItem& item : (*session)->items()) {
        ++number;
        if (all || item.isDone == done)
            tasks.push_back({number, item});
    }
    if (arguments.has("json")) {
        ExportedItemsWriter writer;
        for (const control::NumberedItem& task : tasks)
            writer.add(task.item, task.number);
        std::puts(writer.finish().c_str());
        return ExitCode::Done;
    }
    const Terminal terminal = Terminal::ofStandardOutput();
    const unicode::DateFormat dates(unicode::systemTimeZone(), unicode::systemLocale());
    std::fputs(taskTable(tasks, SystemClock().now(), dates, terminal).c_str(), stdout);
    // Silence is right for a script, but puzzles a person.
    if (tasks.empty() && isatty(STDOUT_FILENO))
        std::puts(done ? "Nothing done yet." : "Nothing to do.");
    return ExitCode::Done;
}

} // namespace quillo::cli
