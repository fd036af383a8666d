/// Folders of preferences for tests.
#pragma once

#include "support/TemporaryFolder.h"

#include <filesystem>
#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace quillo::support {

/// What a file holds. A test that fails prints how much, not what.
struct Bytes {
    std::string bytes;

    Bytes() = default;
    Bytes(std::string all) : bytes(std::move(all)) {}
    Bytes(const char* text) : bytes(text) {}
    friend bool operator==(const Bytes&, const Bytes&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const Bytes& printed) {
        return stream << printed.bytes.size() << " bytes with hash "
                      << std::hash<std::string>()(printed.bytes);
    }
};

/// A folder of its own for a test, where preferences are or will be.
class PreferencesFolder : public TemporaryFolder {
public:
    ~PreferencesFolder() {
        // A test may have taken away the right to remove what is in it.
        std::error_code ignored;
        std::filesystem::permissions(path(), std::filesystem::perms::owner_all, ignored);
    }

    std::filesystem::path file() const { return path() / "preferences.sqlite"; }

    /// Names in it, sorted.
    std::vector<std::string> names() const { return namesIn(path()); }

    /// Bytes of every file in it, by name.
    std::map<std::string, Bytes> contents() const {
        std::map<std::string, Bytes> contents;
        for (const auto& entry : std::filesystem::directory_iterator(path()))
            contents[entry.path().filename().string()] = read(entry.path());
        return contents;
    }

    /// The files that were moved aside, by what follows the time in their names: "" for the database, "-wal"
    /// ...
    std::map<std::string, Bytes> damaged() const {
        std::map<std::string, Bytes> damaged;
        for (const auto& [name, bytes] : contents()) {
            const std::string start = "preferences.damaged-";
            if (name.starts_with(start))
                damaged[name.substr(name.find('Z', start.size()) + 1)] = bytes;
        }
        return damaged;
    }

    static std::string read(const std::filesystem::path& path) { return bytesOf(path); }
    static void write(const std::filesystem::path& path, const std::string& bytes) { writeFile(path, bytes); }
};

} // namespace quillo::support
