/// Asks the program that holds the list.
#pragma once

#include "control/Answer.h"
#include "control/Request.h"

#include <chrono>
#include <filesystem>
#include <optional>

namespace quillo::control {

/// How long a command waits for its answer.
inline constexpr std::chrono::seconds patience{10};

/// The answer of the program that holds the list of that folder, once what it changed is on disk; absent if
/// there is none that listens, or it ends without having taken the request. Waits. An error if it does not
/// answer in time or goes away before it has: then the command may have been done or not.
std::optional<Answer> ask(const std::filesystem::path& dataFolder, const Request& request,
                          std::chrono::milliseconds limit = patience);

/// Whether a program listens for commands on that folder's list. Does not wait.
bool isServed(const std::filesystem::path& dataFolder);

} // namespace quillo::control
