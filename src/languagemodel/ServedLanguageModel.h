/// A language model of a server, in a program that has not yet loaded what asks servers.
#pragma once

#include "base/CallbackScope.h"
#include "base/Executor.h"
#include "base/SerialQueue.h"
#include "languagemodel/ModelServers.h"
#include "ports/LanguageModel.h"

#include <functional>
#include <memory>
#include <vector>

namespace quillo {

/// Belongs to the main thread. The first session has the library loaded in the background; what is asked
/// meanwhile waits for it. Where it cannot be loaded, all that is asked is answered by an error.
class ServedLanguageModel final : public LanguageModel {
public:
    /// Gives the library, or null; called on a thread of its own.
    using Load = std::function<ModelServers*()>;

    ServedLanguageModel(ServedModel choice, Executor& mainExecutor, Load load);

    bool isAvailable() const override { return true; }
    std::unique_ptr<LanguageModelSession> startSession(std::string instructions,
                                                       ModelReference reference) override;

private:
    class Session;
    enum class State { NotLoaded, Loading, Loaded };

    void load();
    void whenLoaded(std::function<void()> task);

    const ServedModel choice_;
    Executor& mainExecutor_;
    const Load load_;
    State state_ = State::NotLoaded;
    std::unique_ptr<LanguageModel> model_; ///< null where the library is not loaded, or cannot be
    std::vector<std::function<void()>> waiting_;
    CallbackScope scope_;
    SerialQueue loader_{"Quillo.Loader"};
};

} // namespace quillo
