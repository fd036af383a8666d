/// Files that programs or people asked for.
#pragma once

#include "base/Result.h"

#include <filesystem>
#include <string_view>

namespace quillo::cli {

/// Writes the file, in place of one that is there, whose mode it gets: nobody ever sees half of it, and what
/// was there stays if something goes wrong. A link stays, and the file it leads to is written. What is no
/// ordinary file (a pipe, a device) is simply written to. An error is one in words for the user.
Outcome writeWholeFile(const std::filesystem::path& file, std::string_view bytes);

} // namespace quillo::cli
