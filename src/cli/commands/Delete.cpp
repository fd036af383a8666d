#include "cli/Terminal.h"
#include "cli/commands/Change.h"
#include "cli/commands/Commands.h"

#include <unistd.h>

#include <cstdio>

namespace quillo::cli {

ExitCode remove(const Arguments& arguments) {
    return change([&](TaskCommands& commands) { return commands.remove(arguments.words().front()); },
                  printTitle);
}

ExitCode clearCompleted(const Arguments&) {
    const auto session = Session::open(Session::Purpose::Change);
    if (!session)
        return failed(session.error());
    const std::vector<TodoItem> cleared = (*session)->commands().clearCompleted();
    if (const Outcome outcome = (*session)->commit(); !outcome)
        return failed(outcome.error());
    for (const TodoItem& item : cleared)
        std::puts(onOneLine(item.title).c_str());
    if (cleared.empty() && isatty(STDOUT_FILENO))
        std::puts("Nothing done yet.");
    return ExitCode::Done;
}

} // namespace quillo::cli
