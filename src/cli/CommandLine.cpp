#include "cli/CommandLine.h"

#include "base/Log.h"
#include "cli/Command.h"
#include "cli/Terminal.h"
#include "cli/Warnings.h"
#include "cli/commands/Commands.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

namespace quillo::cli {

namespace {

ExitCode wrongUsage(const std::string& what, const std::string& usage) {
    printError(what + "; usage: quillo " + usage);
    return ExitCode::WrongUsage;
}

ExitCode runCommand(const Command& command, const std::vector<std::string>& words) {
    const std::string usage = usageOf(command);
    const Result<Arguments> arguments = Arguments::read(words, command.options);
    if (!arguments)
        return wrongUsage(arguments.error().message, usage);
    if (arguments->has("help")) {
        std::fputs(explanationOf(command).c_str(), stdout);
        return ExitCode::Done;
    }
    const std::vector<std::string>& given = arguments->words();
    if (given.size() < command.fewestWords)
        return wrongUsage("something is missing", usage);
    if (given.size() > command.mostWords)
        return wrongUsage("unexpected \"" + given[command.mostWords] + "\"", usage);
    if (command.objection) {
        if (const auto objection = command.objection(*arguments))
            return wrongUsage(*objection, usage);
    }
    if (arguments->malformed())
        log("malformed characters read as U+FFFD");
    return command.run(*arguments);
}

/// Where a standard stream is closed, the next file that is opened would take its place, and be written to:
/// the tasks, for one. So something that cannot be used takes it.
void occupyClosedStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) < 0)
            ::open("/dev/null",
                   stream == STDIN_FILENO ? O_WRONLY : O_RDONLY); // The lowest free number: this.
    }
}

ExitCode run(std::vector<std::string> words) {
    if (words.empty())
        words.emplace_back("open");
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
    printError(error.message + heldWarningsBeside(error.message));
    return ExitCode::Failed;
}

int runCommandLine(int argc, char** argv) {
    occupyClosedStreams();
    holdWarnings();
    ExitCode code = run({argv + 1, argv + argc});
    // A full disk behind a redirection shows only here.
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        code = failed({"cannot write to standard output"});
    if (code == ExitCode::Done)
        showWarningsAtOnce();
    return static_cast<int>(code);
}

} // namespace quillo::cli
