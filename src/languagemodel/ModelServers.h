/// What asks language-model servers, as the rest of the program sees it.
#pragma once

#include "base/Executor.h"
#include "base/Result.h"
#include "languagemodel/LanguageModelChoice.h"
#include "ports/LanguageModel.h"

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace quillo {

/// It is in a library of its own, `quillo-modelservers`, which is loaded when a server is to be asked: most
/// users have none, and HTTP takes thirty more libraries.
class ModelServers {
public:
    /// How long a session waits for its answer, from the question on.
    static constexpr std::chrono::milliseconds patience{6000};

    virtual ~ModelServers() = default;

    /// A model that is asked over HTTP. Always available: whether the server answers shows only when it is
    /// asked. A session that is dropped, and a model that is dropped, give up what is under way. For the main
    /// thread only, whose the executor is; that outlives the model.
    virtual std::unique_ptr<LanguageModel> model(ServedModel choice, Executor& mainExecutor,
                                                 std::chrono::milliseconds limit = patience) = 0;

    /// The names of the models that each server has, in the order of the addresses; all are asked at once.
    /// Waits, as long as the limit at most.
    virtual std::vector<Result<std::vector<std::string>>>
    modelNames(const std::vector<std::string>& addresses, std::chrono::milliseconds limit) = 0;
};

/// What the library has to offer, under the name in `modelServersGetter`. It lives until the end.
using GetModelServers = ModelServers* (*)();
inline constexpr const char* modelServersGetter = "quilloGetModelServers";

} // namespace quillo
