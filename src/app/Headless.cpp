#include "app/Headless.h"

#include "base/Log.h"

#include <unistd.h>

#include <QtGlobal>
#include <array>
#include <filesystem>
#include <string>
#include <system_error>

namespace quillo {

bool thereIsADisplay() {
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

int continueHeadless(char** argv) {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    // Where it is installed, and where it is built.
    for (const std::filesystem::path& program :
         {folder / QUILLO_HEADLESS_FOLDER / "quillo-headless", folder / "quillo-headless"}) {
        const std::array<char*, 2> arguments{argv[0], nullptr};
        execv(program.c_str(), arguments.data());
    }
    log("quillo-headless is not installed");
    return 1;
}

} // namespace quillo
