#include "base/Product.h"
#include "cli/commands/Commands.h"

#include <cstdio>

namespace quillo::cli {

ExitCode help(const Arguments& arguments) {
    if (!arguments.words().empty()) {
        std::fputs(explanationOf(*findCommand(arguments.words().front())).c_str(), stdout);
        return ExitCode::Done;
    }
    std::puts("usage: quillo COMMAND [ARGUMENT...]\n\n"
              "A to-do list that understands when things are due: quillo add Call mom tomorrow at 9am\n");
    for (const Command& command : commands())
        std::printf("  %-16s %s\n", std::string(command.name).c_str(), std::string(command.summary).c_str());
    std::puts("\nA TASK is a number as shown by list, or the first eight or more digits of an identifier.\n"
              "\"--\" ends the options. More: quillo COMMAND --help, man quillo.");
    return ExitCode::Done;
}

ExitCode version(const Arguments&) {
    std::printf("quillo %s\n", product::version);
    return ExitCode::Done;
}

} // namespace quillo::cli
