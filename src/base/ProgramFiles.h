/// Where the parts of the program are that no user starts.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace quillo {

/// Where a file of that name may be: where it is installed, and where it is built. The first that is there is
/// the one.
std::vector<std::filesystem::path> placesOf(std::string_view file);

} // namespace quillo
