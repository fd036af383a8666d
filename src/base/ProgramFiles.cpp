#include "base/ProgramFiles.h"

#include <system_error>

namespace quillo {

std::vector<std::filesystem::path> placesOf(std::string_view file) {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    return {folder / QUILLO_FILES_FOLDER / file, folder / file};
}

} // namespace quillo
