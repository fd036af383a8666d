/// A language model that a server has.
#pragma once

#include "base/CallbackScope.h"
#include "base/Executor.h"
#include "languagemodel/LanguageModelChoice.h"
#include "modelservers/Transfers.h"
#include "ports/LanguageModel.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace quillo {

/// See ModelServers::model().
class HttpLanguageModel final : public LanguageModel {
public:
    HttpLanguageModel(ServedModel choice, Executor& mainExecutor, std::chrono::milliseconds limit);

    bool isAvailable() const override { return true; }
    std::unique_ptr<LanguageModelSession> startSession(std::string instructions,
                                                       ModelReference reference) override;

private:
    class Session;
    class Question;
    class WarmUp;

    /// The name of the model to be asked, where it is known; which one a server has first, for some seconds.
    std::string knownName() const;

    /// What any thread may tell which one that is.
    std::function<void(std::string)> rememberLater();

    void warmUp(const std::string& instructions);

    const ServedModel choice_;
    Executor& mainExecutor_;
    const std::chrono::milliseconds limit_;
    std::string first_;
    std::chrono::steady_clock::time_point firstSeen_;
    bool warmingUp_ = false;
    CallbackScope scope_;
    Transfers transfers_; ///< last, as it ends what may use the others
};

} // namespace quillo
