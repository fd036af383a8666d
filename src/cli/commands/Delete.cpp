#include "cli/commands/Change.h"
#include "cli/commands/Commands.h"

#include <unistd.h>

#include <cstdio>

namespace quillo::cli {

ExitCode remove(const Arguments& arguments) {
    return change(control::Delete{arguments.words().front()}, printTitles);
}

ExitCode clearCompleted(const Arguments&) {
    return change(control::ClearCompleted{}, [](const Tasks& tasks) {
        printTitles(tasks);
        if (tasks.empty() && isatty(STDOUT_FILENO))
            std::puts("Nothing done yet.");
    });
}

} // namespace quillo::cli
