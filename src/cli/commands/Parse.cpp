#include "base/DataFolder.h"
#include "base/ManualExecutor.h"
#include "classifier/EmbeddedClassifier.h"
#include "cli/BlockingParser.h"
#include "cli/Circumstances.h"
#include "cli/Understanding.h"
#include "cli/commands/AnswerLines.h"
#include "cli/commands/Commands.h"
#include "languagemodel/ChosenLanguageModel.h"
#include "languagemodel/MakeLanguageModel.h"
#include "languagemodel/PreferredLanguageModel.h"
#include "sqlite/SqlitePreferences.h"
#include "unicode/SystemPlace.h"

#include <cstdio>
#include <memory>

namespace quillo::cli {

namespace {

/// The one that a typed task would be understood by. Called when a text asks for it: most do not, and need no
/// preferences.
std::unique_ptr<LanguageModel> chosenLanguageModel(Executor& mainExecutor) {
    std::unique_ptr<SqlitePreferences> preferences;
    if (const auto folder = dataFolder()) {
        if (auto opened = SqlitePreferences::open(*folder, SqlitePreferences::Access::ReadOnly))
            preferences = std::move(*opened);
    }
    return makeLanguageModel(preferredLanguageModel(preferences.get()).choice, mainExecutor,
                             makeEmbeddedClassifier);
}

} // namespace

ExitCode parse(const Arguments& arguments) {
    ManualExecutor mainExecutor;
    ChosenLanguageModel languageModel([&] { return chosenLanguageModel(mainExecutor); });
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
