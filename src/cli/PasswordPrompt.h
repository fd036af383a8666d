/// Passwords, as the user gives them to a command. They never are arguments, which everybody on the machine
/// can read.
#pragma once

#include "base/Result.h"

#include <string>

namespace quillo::cli {

/// Whether there is somebody to ask: standard input is a terminal.
bool canAskForPassword();

/// Asks on the terminal; what is typed is not shown. An error if it can be no password. A signal that ends
/// the program leaves the terminal as it was.
Result<std::string> askForPassword(const std::string& question);

/// The first line of standard input; an error if it can be no password.
Result<std::string> passwordFromInput();

} // namespace quillo::cli
