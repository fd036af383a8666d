/// Language-model servers, asked over HTTP.
#pragma once

#include "languagemodel/ModelServers.h"

namespace quillo {

class HttpModelServers final : public ModelServers {
public:
    std::unique_ptr<LanguageModel> model(ServedModel choice, Executor& mainExecutor,
                                         std::chrono::milliseconds limit) override;
    std::vector<Result<std::vector<std::string>>> modelNames(const std::vector<std::string>& addresses,
                                                             std::chrono::milliseconds limit) override;
};

} // namespace quillo
