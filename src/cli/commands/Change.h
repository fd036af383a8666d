/// What all commands that change the list have in common.
#pragma once

#include "cli/ExitCode.h"
#include "control/Answer.h"
#include "control/Request.h"

#include <functional>
#include <vector>

namespace quillo::cli {

using Tasks = std::vector<control::NumberedItem>;

/// Has the command done and, once what it changed is on disk, lets `report` tell the user.
ExitCode change(control::Command command, const std::function<void(const Tasks&)>& report);

/// Prints the titles of the tasks that were acted on.
void printTitles(const Tasks& tasks);

/// Prints the title and due date of each, or with `json` the export form.
void printTasks(const Tasks& tasks, bool json);

} // namespace quillo::cli
