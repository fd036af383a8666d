/// The `quillo` command.
#pragma once

namespace quillo::cli {

/// Does what the arguments of the program say and returns its exit code.
int runCommandLine(int argc, char** argv);

} // namespace quillo::cli
