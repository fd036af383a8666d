/// Starting the program with the screen.
#pragma once

#include "base/Result.h"
#include "control/Request.h"

namespace quillo::cli {

/// Starts `quillo-desktop`, the one beside this program or else the first in PATH, and has it show that
/// window. It goes on when this program and its terminal are gone. Does not wait until it is up. An error
/// where there is no display or no such program.
Outcome startDesktopProgram(control::Show::Window window);

} // namespace quillo::cli
