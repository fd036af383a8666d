/// What the log has to say while a command runs.
///
/// A command that fails reports one line, its error; so warnings wait until it is known how the command
/// ended.
#pragma once

#include <string>
#include <string_view>

namespace quillo::cli {

/// Keeps lines for the log back: the first few, as a command has little to say.
void holdWarnings();

/// What was held back and does not just say what `error` says, for adding to that line: "" or " (one;
/// another)".
std::string heldWarningsBeside(std::string_view error);

/// Shows what was held back on standard error, and from now on each line as it comes.
void showWarningsAtOnce();

} // namespace quillo::cli
