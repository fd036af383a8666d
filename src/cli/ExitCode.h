/// What a command reports to the shell.
#pragma once

#include "base/Result.h"

namespace quillo::cli {

enum class ExitCode : int {
    Done = 0,
    Failed = 1,     ///< could not be done; one line on standard error says why
    WrongUsage = 2, ///< not a command; one line on standard error says how to use it
};

/// Says on standard error what went wrong.
ExitCode failed(const Error& error);

} // namespace quillo::cli
