#include "cli/commands/Change.h"
#include "cli/commands/Commands.h"

namespace quillo::cli {

ExitCode done(const Arguments& arguments) {
    return change(control::SetDone{arguments.words().front(), true}, printTitles);
}

ExitCode undone(const Arguments& arguments) {
    return change(control::SetDone{arguments.words().front(), false}, printTitles);
}

} // namespace quillo::cli
