#include "languagemodel/ChosenLanguageModel.h"

#include <utility>

namespace quillo {

namespace {

class SessionOfChosen final : public LanguageModelSession {
public:
    SessionOfChosen(std::shared_ptr<LanguageModel> model, std::string instructions, ModelReference reference)
        : model_(std::move(model)),
          session_(model_ ? model_->startSession(std::move(instructions), std::move(reference)) : nullptr) {}

    void respond(std::string_view prompt, AnswerSchema schema, Reply reply) override {
        const std::shared_ptr<LanguageModel> kept = model_; // The reply may drop this session.
        if (session_)
            session_->respond(prompt, schema, std::move(reply));
        else
            reply(Error{"no language model is chosen"});
    }

    void prewarm() override {
        if (session_)
            session_->prewarm();
    }

private:
    const std::shared_ptr<LanguageModel> model_;
    const std::unique_ptr<LanguageModelSession> session_;
};

} // namespace

void ChosenLanguageModel::choiceChanged() {
    made_ = false;
    model_.reset();
}

bool ChosenLanguageModel::isAvailable() const {
    return model() && model()->isAvailable();
}

std::unique_ptr<LanguageModelSession> ChosenLanguageModel::startSession(std::string instructions,
                                                                        ModelReference reference) {
    return std::make_unique<SessionOfChosen>(model(), std::move(instructions), std::move(reference));
}

const std::shared_ptr<LanguageModel>& ChosenLanguageModel::model() const {
    if (!std::exchange(made_, true))
        model_ = make_();
    return model_;
}

} // namespace quillo
