/// Whose the program's files are.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace quillo {

/// The command that brings newer releases where a package manager owns the program; empty where only that is
/// known; absent where the files are the user's own. Waits for the disk; any thread.
///
/// `program` is the file that runs, `root` the folder that the system's files are looked for in.
std::optional<std::string> packageCommand(const std::filesystem::path& program,
                                          const std::filesystem::path& root = "/");

} // namespace quillo
