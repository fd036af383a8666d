/// A folder of its own for a test, gone with it.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
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

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quillo-test-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path file() const { return path_ / "preferences.sqlite"; }

    /// Names in it, sorted.
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& [name, bytes] : contents())
            names.push_back(name);
        return names;
    }

    /// Bytes of every file in it, by name.
    std::map<std::string, Bytes> contents() const {
        std::map<std::string, Bytes> contents;
        for (const auto& entry : std::filesystem::directory_iterator(path_))
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

    static std::string read(const std::filesystem::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static void write(const std::filesystem::path& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
    }

private:
    std::filesystem::path path_;
};

} // namespace quillo::support
