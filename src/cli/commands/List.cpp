#include "base/Clock.h"
#include "cli/Session.h"
#include "cli/TaskTable.h"
#include "cli/commands/Commands.h"
#include "model/TodoItemJson.h"

#include <unistd.h>

#include <cstdio>

namespace quillo::cli {

ExitCode list(const Arguments& arguments) {
    const bool all = arguments.has("all");
    const bool done = arguments.has("done");
    auto session = Session::open(Session::Purpose::Look);
    if (!session)
        return failed(session.error());

    std::vector<NumberedItem> tasks;
    std::size_t number = 0;
    for (const TodoItem& item : (*session)->store().items()) {
        ++number;
        if (all || item.isDone == done)
            tasks.push_back({number, item});
    }
    if (arguments.has("json")) {
        ExportedItemsWriter writer;
        for (const NumberedItem& task : tasks)
            writer.add(task.item, task.number);
        std::puts(writer.finish().c_str());
        return ExitCode::Done;
    }
    const Terminal terminal = Terminal::ofStandardOutput();
    std::fputs(taskTable(tasks, SystemClock().now(), (*session)->dates(), terminal).c_str(), stdout);
    // Silence is right for a script, but puzzles a person.
    if (tasks.empty() && isatty(STDOUT_FILENO))
        std::puts(done ? "Nothing done yet." : "Nothing to do.");
    return ExitCode::Done;
}

} // namespace quillo::cli
