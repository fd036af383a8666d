/// What all commands with the option --jsonl have in common.
#pragma once

#include "cli/Arguments.h"
#include "cli/ExitCode.h"
#include "cli/JsonLines.h"

namespace quillo::cli {

/// Answers the lines of standard input on standard output, at places of `places`. Fails where one could not
/// be read, after answering the rest.
ExitCode answerStandardInput(const Arguments& arguments, Places& places, const JsonQuestion& question);

} // namespace quillo::cli
