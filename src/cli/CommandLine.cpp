#include "cli/CommandLine.h"

#include "base/Product.h"
#include "cli/Command.h"
#include "cli/commands/Commands.h"

#include <cstdio>
#include <string>
#include <vector>

namespace quillo::cli {

namespace {

ExitCode wrongUsage(const std::string& what, const std::string& usage) {
    std::fprintf(stderr, "quillo: %s; usage: quillo %s\n", what.c_str(), usage.c_str());
    return ExitCode::WrongUsage;
}

ExitCode runCommand(const Command& command, const std::vector<std::string>& words) {
    const std::string usage = usageOf(command);
    std::vector<Option> options = command.options;
    options.push_back({"help"});
    const Result<Arguments> arguments = Arguments::read(words, options);
    if (!arguments)
        return wrongUsage(arguments.error().message, usage);
    if (arguments->has("help")) {
        std::printf("usage: quillo %s\n\n%s.\n", usage.c_str(), std::string(command.summary).c_str());
        return ExitCode::Done;
    }
    const std::vector<std::string>& given = arguments->words();
    if (given.size() < command.fewestWords)
        return wrongUsage("something is missing", usage);
    if (given.size() > command.mostWords)
        return wrongUsage("unexpected \"" + given[command.mostWords] + "\"", usage);
    return command.run(*arguments);
}

ExitCode run(std::vector<std::string> words) {
    if (words.empty())
        words.emplace_back("help");
    std::string name = words.front();
    if (name == "--help" || name == "-h")
        name = "help";
    else if (name == "--version" || name == "-V")
        name = "version";
    words.erase(words.begin());
    if (const Command* command = findCommand(name))
        return runCommand(*command, words);
    return wrongUsage("unknown command \"" + name + "\"",
                      "COMMAND [ARGUMENT...] (quillo help lists the commands)");
}

} // namespace

ExitCode failed(const Error& error) {
    std::fprintf(stderr, "quillo: %s\n", error.message.c_str());
    return ExitCode::Failed;
}

int runCommandLine(int argc, char** argv) {
    ExitCode code = run({argv + 1, argv + argc});
    // A full disk behind a redirection shows only here.
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        code = failed({"cannot write to standard output"});
    return static_cast<int>(code);
}

} // namespace quillo::cli
