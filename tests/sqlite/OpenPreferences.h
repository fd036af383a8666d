/// Opening preferences in tests, where that is not what is tested.
#pragma once

#include "sqlite/SqlitePreferences.h"

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

namespace quillo::support {

using Access = SqlitePreferences::Access;

/// The preferences in `folder`; ends the test where they cannot be opened.
inline std::unique_ptr<SqlitePreferences> openPreferences(const std::filesystem::path& folder,
                                                          Access access = Access::ReadWrite) {
    auto preferences = SqlitePreferences::open(folder, access);
    if (!preferences)
        throw std::runtime_error(preferences.error().message);
    return std::move(*preferences);
}

/// Why they cannot be opened, or "" where they can.
inline std::string openingError(const std::filesystem::path& folder, Access access = Access::ReadWrite) {
    const auto preferences = SqlitePreferences::open(folder, access);
    return preferences ? "" : preferences.error().message;
}

/// Why flushing fails, or "" where it does not.
inline std::string flushError(SqlitePreferences& preferences) {
    const Outcome outcome = preferences.flush();
    return outcome ? "" : outcome.error().message;
}

/// Data that is not loaded with the rest, different for every `seed`.
inline std::string largeBytes(unsigned seed = 1, std::size_t size = 300'000) {
    std::string bytes(size, '\0');
    for (char& byte : bytes) {
        seed = seed * 1664525U + 1013904223U;
        byte = static_cast<char>(seed >> 24);
    }
    return bytes;
}

} // namespace quillo::support
