// Any bytes as the preferences file: opening it never crashes and never loses them. Looking changes nothing;
// opening it for writing leaves it as it is, or moves it aside whole, or takes it for what it says it is.
#include "base/Log.h"
#include "sqlite/SqlitePreferences.h"

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace {

using quillo::Data;
using quillo::SqlitePreferences;
using Access = SqlitePreferences::Access;

/// Keys that the seeds have.
constexpr const char* keys[] = {"Quillo.items.v1", "Quillo.items.v1.stamp", "Quillo.iCloudSync",
                                "Quillo.stats.lifetime", "Quillo.review.lastPromptedVersion"};

/// In memory where the system has such a place: every run writes a file and waits for it to be on disk.
const std::filesystem::path& folder() {
    static const std::filesystem::path path = [] {
        std::error_code ignored;
        const std::filesystem::path memory = "/dev/shm";
        const std::filesystem::path parent =
            std::filesystem::is_directory(memory, ignored) ? memory : std::filesystem::temp_directory_path();
        std::string pattern = (parent / "quillo-fuzz-XXXXXX").string();
        const std::filesystem::path made = mkdtemp(pattern.data());
        static const struct Remove {
            std::filesystem::path path;
            ~Remove() { std::filesystem::remove_all(path); }
        } atExit{made};
        return made;
    }();
    return path;
}

std::string read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Whether a file in the folder holds exactly these bytes.
bool isKept(std::string_view bytes) {
    for (const auto& entry : std::filesystem::directory_iterator(folder())) {
        if (read(entry.path()) == bytes)
            return true;
    }
    return false;
}

bool isMovedAside() {
    for (const auto& entry : std::filesystem::directory_iterator(folder())) {
        if (entry.path().filename().string().starts_with("preferences.damaged-"))
            return true;
    }
    return false;
}

void readAll(SqlitePreferences& preferences) {
    for (const char* key : keys)
        preferences.value(key);
}

void require(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    quillo::setLogSink([](std::string_view) {});
    for (const auto& entry : std::filesystem::directory_iterator(folder()))
        std::filesystem::remove(entry.path());
    const std::filesystem::path file = folder() / "preferences.sqlite";
    std::ofstream(file, std::ios::binary) << bytes;

    if (auto preferences = SqlitePreferences::open(folder(), Access::ReadOnly))
        readAll(**preferences);
    require(read(file) == bytes);
    require(std::distance(std::filesystem::directory_iterator(folder()), {}) == 1);

    {
        auto preferences = SqlitePreferences::open(folder(), Access::ReadWrite);
        require(preferences ? !isMovedAside() || isKept(bytes) : read(file) == bytes);
        if (!preferences)
            return 0;
        readAll(**preferences);
        (*preferences)->apply({{keys[0], Data(std::string(70'000, 'x'))}, {keys[1], 1.5}});
        require((*preferences)->real(keys[1]) == 1.5);
        if (!(*preferences)->flush())
            return 0;
    }
    SqlitePreferences::open(folder(), Access::ReadWrite).ok();
    return 0;
}
