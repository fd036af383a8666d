/// Where the program's files lie.
#pragma once

#include "base/Result.h"

#include <filesystem>

namespace quillo {

/// $QUILLO_DATA_DIR; else `quillo` below $XDG_DATA_HOME, if that is an absolute path; else
/// ~/.local/share/quillo. An error where the user has no home. Source: XDG Base Directory standard,
/// "Environment variables".
Result<std::filesystem::path> dataFolder();

} // namespace quillo
