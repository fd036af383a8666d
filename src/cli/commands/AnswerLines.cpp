#include "cli/commands/AnswerLines.h"

#include "cli/Warnings.h"

#include <cstdio>

namespace quillo::cli {

ExitCode answerStandardInput(const Arguments& arguments, Places& places, const JsonQuestion& question) {
    // Scripts get the same answers everywhere: the user's locale counts only where it is asked for.
    const Result<Circumstances> circumstances = circumstancesOf(arguments, "en_US", places);
    if (!circumstances)
        return failed(circumstances.error());
    showWarningsAtOnce(); // About a line, while it is being looked at; and there may be any number.
    const Result<bool> allRead = answerJsonLines(stdin, stdout, *circumstances, places, question);
    if (!allRead)
        return failed(allRead.error());
    return *allRead ? ExitCode::Done : ExitCode::Failed;
}

} // namespace quillo::cli
