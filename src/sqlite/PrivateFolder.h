/// The folder that holds the user's files: for the user alone.
#pragma once

#include "base/Result.h"

#include <filesystem>
#include <string>

namespace quillo {

/// Makes `folder` where it is missing, and what is missing above it, with mode 0700. An existing folder stays
/// as it is.
Outcome makePrivateFolder(const std::filesystem::path& folder);

/// What the system says about an error number, in words.
std::string systemErrorText(int errorNumber);

} // namespace quillo
