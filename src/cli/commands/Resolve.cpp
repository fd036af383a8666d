#include "cli/commands/AnswerLines.h"
#include "cli/commands/Commands.h"

namespace quillo::cli {

ExitCode resolve(const Arguments& arguments) {
    return answerStandardInput(arguments, classificationQuestion);
}

} // namespace quillo::cli
