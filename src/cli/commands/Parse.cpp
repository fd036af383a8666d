#include "base/ManualExecutor.h"
#include "cli/BlockingParser.h"
#include "cli/Circumstances.h"
#include "cli/Understanding.h"
#include "cli/UsersLanguageModel.h"
#include "cli/commands/AnswerLines.h"
#include "cli/commands/Commands.h"
#include "unicode/SystemPlace.h"

#include <cstdio>

namespace quillo::cli {

ExitCode parse(const Arguments& arguments) {
    ManualExecutor mainExecutor;
    ChosenLanguageModel languageModel = usersLanguageModel(mainExecutor);
    const BlockingParser parser(mainExecutor);
    Places places(&languageModel);
    if (arguments.has("jsonl"))
        return answerStandardInput(arguments, places, textQuestion(parser));

    const Result<Circumstances> circumstances = circumstancesOf(arguments, unicode::systemLocale(), places);
    if (!circumstances)
        return failed(circumstances.error());
    const Place& place = *circumstances->place;
    const std::string text = arguments.text();
    Trace matched;
    const Parse understood = parser.parse(place, text, circumstances->now(), &matched);
    const Trace* trace = arguments.has("trace") ? &matched : nullptr;
    if (arguments.has("json"))
        std::printf("{%s}\n", membersOf(understood, text, trace).c_str());
    else
        std::fputs(described(understood, text, trace, place).c_str(), stdout);
    return ExitCode::Done;
}

} // namespace quillo::cli
