/// What a command of the command line is.
#pragma once

#include "cli/Arguments.h"
#include "cli/ExitCode.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillo::cli {

struct Command {
    std::string_view name;
    std::string_view synopsis = {}; ///< its arguments, as the usage line shows them
    std::string_view summary;       ///< what it does, in a few words
    std::vector<Option> options = {};
    std::size_t fewestWords = 0;
    std::size_t mostWords = 0;

    /// What speaks against arguments that were each right by themselves; may be missing.
    std::optional<std::string> (*objection)(const Arguments&) = nullptr;

    /// Does it. Reports a failure itself (see failed) and says how it went.
    ExitCode (*run)(const Arguments&) = nullptr;
};

/// All of them, in the order in which help lists them.
std::span<const Command> commands();

/// The command of that name, if there is one.
const Command* findCommand(std::string_view name);

} // namespace quillo::cli
