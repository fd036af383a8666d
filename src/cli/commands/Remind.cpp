#include "cli/commands/Change.h"
#include "cli/commands/Commands.h"
#include "unicode/Text.h"

namespace quillo::cli {

ExitCode remind(const Arguments& arguments) {
    const std::string when = arguments.has("clear") ? "" : arguments.text(1);
    if (!arguments.has("clear") && unicode::isBlank(when)) // Known without waiting for anything.
        return failed({"there is no date in \"" + when + "\""});
    return change(control::Remind{arguments.words().front(), when},
                  [](const Tasks& tasks) { printTasks(tasks, false); });
}

} // namespace quillo::cli
