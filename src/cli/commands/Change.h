/// What all commands that change the list have in common.
#pragma once

#include "cli/ExitCode.h"
#include "cli/Session.h"

#include <functional>

namespace quillo::cli {

/// Opens the list, lets `change` change it, waits until that is on disk, and only then has `report` tell the
/// user.
ExitCode change(const std::function<Result<NumberedItem>(TaskCommands&)>& change,
                const std::function<void(const NumberedItem&, const Session&)>& report);

/// Prints the title of the task that was acted on.
void printTitle(const NumberedItem& task, const Session& session);

} // namespace quillo::cli
