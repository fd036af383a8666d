/// How a command that changes the list is carried out.
#pragma once

#include "control/Answer.h"
#include "control/Request.h"

namespace quillo::cli {

/// Hands the command to the program that holds the list of the user's data folder, if one runs; else takes
/// hold of it and does it itself. Returns when what was changed is on disk. Waits at most two seconds for
/// another command that holds the list, at most ten for a program's answer, and before it takes hold of the
/// list for a language model.
control::Answer ask(control::Command command);

} // namespace quillo::cli
