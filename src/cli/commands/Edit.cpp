#include "cli/commands/Change.h"
#include "cli/commands/Commands.h"
#include "unicode/Text.h"

namespace quillo::cli {

ExitCode edit(const Arguments& arguments) {
    const std::string text = arguments.text(1);
    if (unicode::isBlank(text)) // Known without waiting for anything.
        return failed({"a task needs a text"});
    return change(control::Edit{arguments.words().front(), text}, printTitles);
}

} // namespace quillo::cli
