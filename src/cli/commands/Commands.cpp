#include "cli/commands/Commands.h"

#include <algorithm>
#include <limits>

namespace quillo::cli {

namespace {

constexpr std::size_t any = std::numeric_limits<std::size_t>::max();

std::optional<std::string> objectionToList(const Arguments& arguments) {
    if (arguments.has("all") && arguments.has("done"))
        return "--all and --done exclude each other";
    return std::nullopt;
}

std::optional<std::string> objectionToRemind(const Arguments& arguments) {
    const bool when = arguments.words().size() > 1;
    if (arguments.has("clear") && when)
        return "--clear takes the date away; there cannot be another";
    if (!arguments.has("clear") && !when)
        return "something is missing";
    return std::nullopt;
}

std::optional<std::string> objectionToExport(const Arguments& arguments) {
    const std::string& format = arguments.words().front();
    if (format != "markdown" && format != "json")
        return "unknown format \"" + format + "\"";
    return std::nullopt;
}

std::optional<std::string> objectionToParse(const Arguments& arguments) {
    if (arguments.has("jsonl") && !arguments.words().empty())
        return "--jsonl takes its texts from standard input";
    if (arguments.has("jsonl") && (arguments.has("json") || arguments.has("trace")))
        return "--jsonl has a form of its own";
    if (!arguments.has("jsonl") && arguments.words().empty())
        return "something is missing";
    return std::nullopt;
}

std::optional<std::string> objectionToResolve(const Arguments& arguments) {
    if (!arguments.has("jsonl"))
        return "--jsonl is missing";
    return std::nullopt;
}

std::optional<std::string> objectionToHelp(const Arguments& arguments) {
    if (!arguments.words().empty() && findCommand(arguments.words().front()) == nullptr)
        return "unknown command \"" + arguments.words().front() + "\"";
    return std::nullopt;
}

const Command all[] = {
    {.name = "add",
     .synopsis = "[--json] TEXT...",
     .summary = "Adds a task; dates and times in the text become its due date",
     .options = {{"json", "prints the new task as JSON"}},
     .fewestWords = 1,
     .mostWords = any,
     .run = add},
    {.name = "list",
     .synopsis = "[--all|--done] [--json]",
     .summary = "Lists the open tasks, all of them, or those that are done",
     .options = {{"all", "lists all tasks, open and done"},
                 {"done", "lists the tasks that are done"},
                 {"json", "prints them as JSON"}},
     .objection = objectionToList,
     .run = list},
    {.name = "done",
     .synopsis = "TASK",
     .summary = "Completes a task, named by its number or identifier",
     .fewestWords = 1,
     .mostWords = 1,
     .run = done},
    {.name = "undone",
     .synopsis = "TASK",
     .summary = "Makes a completed task open again",
     .fewestWords = 1,
     .mostWords = 1,
     .run = undone},
    {.name = "edit",
     .synopsis = "TASK TEXT...",
     .summary = "Gives a task a new title, taken as it stands",
     .fewestWords = 2,
     .mostWords = any,
     .run = edit},
    {.name = "remind",
     .synopsis = "TASK WHEN... | TASK --clear",
     .summary = "Gives a task another due date and reminder, or takes them away",
     .options = {{"clear", "takes the due date and the reminder away"}},
     .fewestWords = 1,
     .mostWords = any,
     .objection = objectionToRemind,
     .run = remind},
    {.name = "delete",
     .synopsis = "TASK",
     .summary = "Deletes a task",
     .fewestWords = 1,
     .mostWords = 1,
     .run = remove},
    {.name = "clear-completed", .summary = "Deletes all tasks that are done", .run = clearCompleted},
    {.name = "restore",
     .synopsis = "[NUMBER]",
     .summary = "Lists the earlier lists that are kept, or brings one back",
     .mostWords = 1,
     .run = restore},
    {.name = "export",
     .synopsis = "markdown|json [-o FILE]",
     .summary = "Prints the whole list as a document, or writes it to a file",
     .options = {{"output", "the file to write; - is standard output", "FILE", 'o', true}},
     .fewestWords = 1,
     .mostWords = 1,
     .objection = objectionToExport,
     .run = exportList},
    {.name = "stats",
     .synopsis = "[--json]",
     .summary = "Shows how many tasks were completed, and how fast",
     .options = {{"json", "prints it as JSON"}},
     .run = stats},
    {.name = "parse",
     .synopsis = "[--now WHEN] [--time-zone ZONE] [--locale LOCALE] [--json] [--trace] TEXT... | --jsonl",
     .summary = "Shows what would be understood of a text; adds nothing",
     .options = {{"now", "understands the text as typed then: 2025-03-04T09:41, or seconds since 1970",
                  "WHEN"},
                 {"time-zone", "there, for example Europe/Berlin", "ZONE"},
                 {"locale", "and in that language, for example en_US", "LOCALE"},
                 {"json", "prints what was understood as JSON"},
                 {"trace", "shows which rules matched, and what a language model said"},
                 {"jsonl", "reads a JSON object a line from standard input and answers each with one"}},
     .mostWords = any,
     .objection = objectionToParse,
     .run = parse},
    {.name = "resolve",
     .synopsis = "[--now WHEN] [--time-zone ZONE] [--locale LOCALE] --jsonl",
     .summary = "Shows when classified texts are due; adds nothing",
     .options = {{"now", "for those that were typed then: 2025-03-04T09:41, or seconds since 1970", "WHEN"},
                 {"time-zone", "there, for example Europe/Berlin", "ZONE"},
                 {"locale", "and in the calendar of that locale, for example en_US", "LOCALE"},
                 {"jsonl", "reads a JSON object a line from standard input and answers each with one"}},
     .objection = objectionToResolve,
     .run = resolve},
    {.name = "model",
     .synopsis = "list|status [--json] | use [--schema-in-prompt] embedded|none|ADDRESS [MODEL]",
     .summary = "Shows or chooses the language model that is asked",
     .options = {{"json", "prints the list or the status as JSON"},
                 {"schema-in-prompt", "describes to the server's model in words what it is to answer"}},
     .fewestWords = 1,
     .mostWords = 3,
     .objection = objectionToModel,
     .run = model},
    {.name = "sync",
     .synopsis =
         "status [--json] | use [OPTION...] folder DIRECTORY|webdav URL | off | now | forget COMPUTER",
     .summary = "Keeps the list in step with other computers, or shows how that fares",
     .options = {{"json", "prints the status as JSON"},
                 {"keep", "which list goes on where there are tasks here and there", "mine|theirs"},
                 {"user", "who the server shall take you for; the password is asked for", "USER"},
                 {"password-stdin", "reads the password from standard input instead"}},
     .fewestWords = 1,
     .mostWords = any,
     .objection = objectionToSync,
     .run = sync},
    {.name = "open", .summary = "Opens the list on the screen", .run = open},
    {.name = "quick-add", .summary = "Opens the panel for a new task on the screen", .run = quickAdd},
    {.name = "settings", .summary = "Opens the settings on the screen", .run = settings},
    {.name = "statistics", .summary = "Opens the statistics on the screen", .run = statistics},
    {.name = "quit", .summary = "Ends the desktop program, if it runs", .run = quit},
    {.name = "help",
     .synopsis = "[COMMAND]",
     .summary = "Lists the commands, or explains one",
     .mostWords = 1,
     .objection = objectionToHelp,
     .run = help},
    {.name = "version", .summary = "Prints the version", .run = version},
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

std::string explanationOf(const Command& command) {
    std::string text = "usage: quillo " + usageOf(command) + "\n\n" + std::string(command.summary) + ".\n";
    if (!command.options.empty())
        text += '\n';
    for (const Option& option : command.options) {
        std::string name = option.letter != 0 ? std::string{'-', option.letter, ',', ' '} : "";
        name.append("--").append(option.name);
        if (!option.value.empty())
            name.append(" ").append(option.value);
        constexpr std::size_t column = 20;
        name.resize(std::max(name.size() + 1, column), ' ');
        text.append("  ").append(name).append(option.explanation).append("\n");
    }
    return text;
}

std::string usageOf(const Command& command) {
    std::string usage(command.name);
    if (!command.synopsis.empty())
        usage.append(" ").append(command.synopsis);
    return usage;
}

} // namespace quillo::cli
