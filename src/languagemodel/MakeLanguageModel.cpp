#include "languagemodel/MakeLanguageModel.h"

#include "languagemodel/ModelServersLibrary.h"

namespace quillo {

std::unique_ptr<LanguageModel> makeLanguageModel(const LanguageModelChoice& choice, Executor& mainExecutor,
                                                 const MakeEmbeddedModel& makeEmbedded) {
    if (std::holds_alternative<EmbeddedModel>(choice))
        return makeEmbedded ? makeEmbedded() : nullptr;
    const auto* const served = std::get_if<ServedModel>(&choice);
    ModelServers* const servers = served ? loadModelServers() : nullptr;
    return servers ? servers->model(*served, mainExecutor) : nullptr;
}

} // namespace quillo
