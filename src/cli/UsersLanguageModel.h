/// The language model that a command asks.
#pragma once

#include "base/Executor.h"
#include "languagemodel/ChosenLanguageModel.h"

namespace quillo::cli {

/// The one that the user has chosen. Nothing is read or made before a text asks for it: most do not. The
/// executor is the one that it replies through; it must outlive the model.
ChosenLanguageModel usersLanguageModel(Executor& mainExecutor);

} // namespace quillo::cli
