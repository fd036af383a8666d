/// The language model that is chosen at the time, in a program that stays while the choice changes.
#pragma once

#include "ports/LanguageModel.h"

#include <functional>
#include <memory>

namespace quillo {

/// Belongs to the main thread. Asks the model that was chosen when a session began; that one lives on until
/// the last of its sessions is dropped.
class ChosenLanguageModel final : public LanguageModel {
public:
    /// Makes the model that is chosen now; null where none is.
    using Make = std::function<std::unique_ptr<LanguageModel>()>;

    /// Nothing is made before it is needed.
    explicit ChosenLanguageModel(Make make) : make_(std::move(make)) {}

    /// Another one was chosen: it is made when next one is needed.
    void choiceChanged();

    bool isAvailable() const override;
    std::unique_ptr<LanguageModelSession> startSession(std::string instructions,
                                                       ModelReference reference) override;

private:
    const std::shared_ptr<LanguageModel>& model() const;

    const Make make_;
    mutable bool made_ = false;
    mutable std::shared_ptr<LanguageModel> model_; ///< null where none is chosen
};

} // namespace quillo
