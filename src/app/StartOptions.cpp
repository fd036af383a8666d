#include "app/StartOptions.h"

#include <string_view>

namespace quillo {

std::optional<StartOptions> StartOptions::read(int argc, const char* const* argv) {
    StartOptions options;
    if (argc <= 1)
        return options;
    const std::string_view first = argv[1];
    if (first == "--show" && argc == 3) {
        options.window = control::windowNamed(argv[2]);
        return options.window ? std::optional(options) : std::nullopt;
    }
    if (argc != 2)
        return std::nullopt;
    if (first == "--headless")
        options.mode = Mode::headless;
    else if (first == "--help")
        options.mode = Mode::help;
    else if (first == "--version")
        options.mode = Mode::version;
    else
        return std::nullopt;
    return options;
}

} // namespace quillo
