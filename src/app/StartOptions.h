/// What the desktop program is started with.
#pragma once

#include "control/Request.h"

#include <optional>

namespace quillo {

struct StartOptions {
    enum class Mode { screen, headless, help, version };
    Mode mode = Mode::screen;
    std::optional<control::Show::Window> window; ///< to begin with

    /// Absent where the arguments are not understood.
    static std::optional<StartOptions> read(int argc, const char* const* argv);
};

} // namespace quillo
