/// How a command that changes the list is carried out.
#pragma once

#include "control/Answer.h"
#include "control/Request.h"

#include <functional>

namespace quillo::cli {

/// Hands the command to the program that holds the list of the user's data folder, if one runs; else takes
/// hold of it and does it itself. Tells the answer once, when what was changed is on disk; what has to go to
/// other computers then has a moment for it. Waits at most two seconds for another command that holds the
/// list, at most ten for a program's answer (minutes where
/// that waits for a network or the user), and before it takes hold of the list for a language model.
void ask(control::Command command, const std::function<void(const control::Answer&)>& tell);

} // namespace quillo::cli
