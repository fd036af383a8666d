#include "languagemodel/MakeLanguageModel.h"

#include "languagemodel/ModelServersLibrary.h"
#include "languagemodel/ServedLanguageModel.h"

namespace quillo {

std::unique_ptr<LanguageModel> makeLanguageModel(const LanguageModelChoice& choice, Executor& mainExecutor,
                                                 const MakeEmbeddedModel& makeEmbedded) {
    if (std::holds_alternative<EmbeddedModel>(choice))
        return makeEmbedded ? makeEmbedded() : nullptr;
    if (const auto* const served = std::get_if<ServedModel>(&choice))
        return std::make_unique<ServedLanguageModel>(*served, mainExecutor, loadModelServers);
    return nullptr;
}

} // namespace quillo
