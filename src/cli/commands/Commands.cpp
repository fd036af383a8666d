#include "cli/commands/Commands.h"

#include <algorithm>
#include <limits>

namespace quillo::cli {

namespace {

constexpr std::size_t any = std::numeric_limits<std::size_t>::max();

const Command all[] = {
    {"add",
     "[--json] TEXT...",
     "Adds a task; dates and times in the text become its due date",
     {{"json"}},
     1,
     any,
     add},
    {"list",
     "[--all|--done] [--json]",
     "Lists the open tasks, all of them, or those that are done",
     {{"all"}, {"done"}, {"json"}},
     0,
     0,
     list},
    {"done", "TASK", "Completes a task, named by its number or identifier", {}, 1, 1, done},
    {"undone", "TASK", "Makes a completed task open again", {}, 1, 1, undone},
    {"edit", "TASK TEXT...", "Gives a task a new title, taken as it stands", {}, 2, any, edit},
    {"delete", "TASK", "Deletes a task", {}, 1, 1, remove},
    {"clear-completed", "", "Deletes all tasks that are done", {}, 0, 0, clearCompleted},
    {"parse",
     "[--now WHEN] [--time-zone ZONE] [--locale LOCALE] [--json] [--trace] TEXT... | --jsonl",
     "Shows what would be understood of a text; adds nothing",
     {{"now", true}, {"time-zone", true}, {"locale", true}, {"json"}, {"trace"}, {"jsonl"}},
     0,
     any,
     parse},
    {"help", "[COMMAND]", "Lists the commands, or explains one", {}, 0, 1, help},
    {"version", "", "Prints the version", {}, 0, 0, version},
};

} // namespace

std::span<const Command> commands() {
    return all;
}

const Command* findCommand(std::string_view name) {
    const auto* found = std::find_if(std::begin(all), std::end(all),
                                     [&](const Command& command) { return command.name == name; });
    return found == std::end(all) ? nullptr : found;
}

std::string usageOf(const Command& command) {
    std::string usage(command.name);
    if (!command.synopsis.empty())
        usage.append(" ").append(command.synopsis);
    return usage;
}

} // namespace quillo::cli
