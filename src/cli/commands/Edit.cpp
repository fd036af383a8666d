#include "cli/commands/Change.h"
#include "cli/commands/Commands.h"

namespace quillo::cli {

ExitCode edit(const Arguments& arguments) {
    const std::string text = arguments.text(1);
    return change([&](TaskCommands& commands) { return commands.edit(arguments.words().front(), text); },
                  printTitle);
}

} // namespace quillo::cli
