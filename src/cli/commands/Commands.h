/// The commands, one file each (close relatives share one), in alphabetical order.
#pragma once

#include "cli/Command.h"

#include <optional>
#include <string>

namespace quillo::cli {

ExitCode add(const Arguments& arguments);
ExitCode clearCompleted(const Arguments& arguments);
ExitCode done(const Arguments& arguments);
ExitCode edit(const Arguments& arguments);
ExitCode exportList(const Arguments& arguments);
ExitCode help(const Arguments& arguments);
ExitCode list(const Arguments& arguments);
ExitCode model(const Arguments& arguments);
ExitCode parse(const Arguments& arguments);
ExitCode open(const Arguments& arguments);
ExitCode quickAdd(const Arguments& arguments);
ExitCode settings(const Arguments& arguments);
ExitCode statistics(const Arguments& arguments);
ExitCode quit(const Arguments& arguments);
ExitCode remind(const Arguments& arguments);
ExitCode remove(const Arguments& arguments);
ExitCode resolve(const Arguments& arguments);
ExitCode restore(const Arguments& arguments);
ExitCode stats(const Arguments& arguments);
ExitCode sync(const Arguments& arguments);
ExitCode undone(const Arguments& arguments);
ExitCode version(const Arguments& arguments);

/// What speaks against the arguments of `model`.
std::optional<std::string> objectionToModel(const Arguments& arguments);

/// What speaks against the arguments of `sync`.
std::optional<std::string> objectionToSync(const Arguments& arguments);

/// A command's name and arguments, as a usage line shows them.
std::string usageOf(const Command& command);

/// What a command does and what its options are for.
std::string explanationOf(const Command& command);

} // namespace quillo::cli
