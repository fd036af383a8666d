#include "cli/commands/Change.h"
#include "cli/commands/Commands.h"

namespace quillo::cli {

namespace {

ExitCode setDone(const Arguments& arguments, bool isDone) {
    return change([&](TaskCommands& commands) { return commands.setDone(arguments.words().front(), isDone); },
                  printTitle);
}

} // namespace

ExitCode done(const Arguments& arguments) {
    return setDone(arguments, true);
}

ExitCode undone(const Arguments& arguments) {
    return setDone(arguments, false);
}

} // namespace quillo::cli
