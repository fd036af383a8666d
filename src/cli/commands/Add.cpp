#include "cli/commands/Change.h"
#include "cli/commands/Commands.h"
#include "unicode/Text.h"

namespace quillo::cli {

ExitCode add(const Arguments& arguments) {
    const std::string text = arguments.text();
    if (unicode::isBlank(text)) // Known without waiting for anything.
        return failed({"a task needs a text"});
    return change(control::Add{text}, [&](const Tasks& tasks) { printTasks(tasks, arguments.has("json")); });
}

} // namespace quillo::cli
