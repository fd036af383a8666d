/// The language model that is part of the program: a small network, trained to tell what a typed task says
/// about time. It reads no instructions; what it was trained for is what they say.
#pragma once

#include "classifier/Weights.h"
#include "ports/LanguageModel.h"

#include <memory>
#include <optional>
#include <span>

namespace quillo {

/// Answers before the question returns, in a fraction of a millisecond. Its weights are unpacked when it is
/// first asked for anything, which takes about a millisecond; where they are not as they should be, it is not
/// available and the log says why.
class EmbeddedClassifier : public LanguageModel {
public:
    /// With the weights that are part of the program.
    EmbeddedClassifier();

    /// With others. The bytes must outlive the model.
    explicit EmbeddedClassifier(std::span<const unsigned char> weights) : bytes_(weights) {}

    bool isAvailable() const override;
    std::unique_ptr<LanguageModelSession> startSession(std::string instructions,
                                                       ModelReference reference) override;

private:
    const classifier::Weights* weights() const;

    std::span<const unsigned char> bytes_;
    mutable std::optional<classifier::Weights> weights_;
    mutable bool tried_ = false;
};

/// The model with the weights that are part of the program.
std::unique_ptr<LanguageModel> makeEmbeddedClassifier();

} // namespace quillo
