#include "base/ManualExecutor.h"
#include "cli/BlockingParser.h"
#include "cli/Circumstances.h"
#include "cli/Understanding.h"
#include "cli/commands/AnswerLines.h"
#include "cli/commands/Commands.h"
#include "ports/LanguageModel.h"
#include "unicode/SystemPlace.h"

#include <cstdio>
#include <memory>

namespace quillo::cli {

ExitCode parse(const Arguments& arguments) {
    ManualExecutor mainExecutor;
    const std::unique_ptr<LanguageModel> languageModel = nullptr; // There is none yet.
    const BlockingParser parser(mainExecutor);
    Places places(languageModel.get());
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
