/// Files that are either there, whole and on the disk, or not there at all.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace quillo {

/// Writes `folder`/`name`, for the user alone (0600), under the name `temporary` in the same file system, and
/// gives it its name once its bytes are on the disk; then sees the name there too. What a crash left under
/// the temporary name is overwritten the next time. Waits for the disk. False, with the reason in errno, if
/// it failed: what was there under the name before is still there, or the new file already.
bool writeDurably(const std::filesystem::path& folder, const std::string& name,
                  const std::filesystem::path& temporary, std::string_view bytes);

} // namespace quillo
