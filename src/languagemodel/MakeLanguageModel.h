/// From a choice to the language model.
#pragma once

#include "base/Executor.h"
#include "languagemodel/LanguageModelChoice.h"
#include "ports/LanguageModel.h"

#include <functional>
#include <memory>

namespace quillo {

/// Makes the model that this program brings along; may be empty where it brings none.
using MakeEmbeddedModel = std::function<std::unique_ptr<LanguageModel>()>;

/// Null where none is to be asked. The executor is the main thread's and outlives the model.
std::unique_ptr<LanguageModel> makeLanguageModel(const LanguageModelChoice& choice, Executor& mainExecutor,
                                                 const MakeEmbeddedModel& makeEmbedded);

} // namespace quillo
