/// A database file that cannot be used any more, and what lies beside it.
#pragma once

#include "base/Result.h"

#include <filesystem>

namespace quillo {

/// Renames `<name>.sqlite` and SQLite's companions of it (-wal, -shm), as far as they exist, to
/// `<name>.damaged-<UTC time>` with the same endings, in the same folder, and returns the new path of the
/// first. No connection may have them open. Nothing is overwritten; the names are on disk when it returns.
Result<std::filesystem::path> moveDamagedAside(const std::filesystem::path& path);

} // namespace quillo
