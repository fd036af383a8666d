/// Where the program that holds the list listens.
#pragma once

#include <sys/socket.h>
#include <sys/un.h>

#include <filesystem>
#include <optional>

namespace quillo::control {

/// `control.sock` in the data folder; where that path is longer than a socket's may be, a name made of a hash
/// of it in $XDG_RUNTIME_DIR, which is the user's alone. Absent where that is too long or not set either.
std::optional<std::filesystem::path> socketPath(const std::filesystem::path& dataFolder);

/// For bind() and connect(); only for what socketPath() gives.
sockaddr_un socketAddress(const std::filesystem::path& path);

} // namespace quillo::control
