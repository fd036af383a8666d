#include "base/Clock.h"
#include "cli/TaskTable.h"
#include "cli/commands/Change.h"
#include "cli/commands/Commands.h"
#include "model/TodoItemJson.h"
#include "unicode/Text.h"

#include <cstdio>

namespace quillo::cli {

ExitCode add(const Arguments& arguments) {
    const std::string text = arguments.text();
    if (unicode::isBlank(text)) // Known without waiting for anything.
        return failed({"a task needs a text"});
    const bool json = arguments.has("json");
    return change([&](TaskCommands& commands) { return commands.add(text); },
                  [&](const NumberedItem& task, const Session& session) {
                      if (json)
                          std::puts(encodeExportedItem(task.item, task.number).c_str());
                      else
                          std::fputs(taskLine(task.item, SystemClock().now(), session.dates(),
                                              Terminal::ofStandardOutput())
                                         .c_str(),
                                     stdout);
                  });
}

} // namespace quillo::cli
