/// Why the preferences file cannot be used.
#pragma once

#include "base/Result.h"

#include <filesystem>
#include <string_view>

struct sqlite3;

namespace quillo {

struct FileFailure {
    Error error;
    int code = 0; ///< SQLite's extended result code; 0 where it was not SQLite that refused.

    /// The file is no database or a broken one, which no waiting and no trying again will change.
    bool damaged() const;
};

/// What SQLite's `code` for `path` means, in words for a user; `done` is what could not be done, as in
/// "cannot be read". `database` is the connection that failed, if there is one.
FileFailure fileFailure(const std::filesystem::path& path, std::string_view done, int code,
                        sqlite3* database);

} // namespace quillo
