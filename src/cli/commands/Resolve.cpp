#include "cli/commands/AnswerLines.h"
#include "cli/commands/Commands.h"

namespace quillo::cli {

ExitCode resolve(const Arguments& arguments) {
    Places places;
    return answerStandardInput(arguments, places, classificationQuestion());
}

} // namespace quillo::cli
