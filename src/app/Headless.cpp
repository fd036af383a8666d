#include "app/Headless.h"

#include "base/Log.h"
#include "base/ProgramFiles.h"

#include <unistd.h>

#include <QtGlobal>
#include <array>

namespace quillo {

bool thereIsADisplay() {
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

int continueHeadless(char** argv) {
    for (const std::filesystem::path& program : placesOf("quillo-headless")) {
        const std::array<char*, 2> arguments{argv[0], nullptr};
        execv(program.c_str(), arguments.data());
    }
    log("quillo-headless is not installed");
    return 1;
}

} // namespace quillo
