#include "base/DataFolder.h"

#include "base/Product.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <optional>

namespace quillo {

namespace {

std::optional<std::filesystem::path> environment(const char* variable) {
    const char* value = std::getenv(variable);
    if (value == nullptr || *value == '\0')
        return std::nullopt;
    return value;
}

std::optional<std::filesystem::path> home() {
    if (auto folder = environment("HOME"))
        return folder;
    std::array<char, 4096> buffer;
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr ||
        found->pw_dir == nullptr || *found->pw_dir == '\0')
        return std::nullopt;
    return found->pw_dir;
}

} // namespace

Result<std::filesystem::path> dataFolder() {
    if (auto folder = environment("QUILLO_DATA_DIR")) {
        std::error_code error;
        return std::filesystem::absolute(*folder, error);
    }
    if (const auto folder = environment("XDG_DATA_HOME"); folder && folder->is_absolute())
        return *folder / product::dataFolderName;
    if (const auto folder = home())
        return *folder / ".local/share" / product::dataFolderName;
    return Error{"no home folder to keep tasks in; set QUILLO_DATA_DIR"};
}

} // namespace quillo
