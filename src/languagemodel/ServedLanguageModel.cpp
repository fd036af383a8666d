#include "languagemodel/ServedLanguageModel.h"

#include <utility>

namespace quillo {

class ServedLanguageModel::Session final : public LanguageModelSession {
public:
    Session(ServedLanguageModel& model, std::string instructions, ModelReference reference)
        : model_(model), instructions_(std::move(instructions)), reference_(std::move(reference)) {}

    void respond(std::string_view prompt, AnswerSchema schema, Reply reply) override {
        reply_ = std::move(reply);
        model_.whenLoaded(scope_.guard([this, text = std::string(prompt), schema] { ask(text, schema); }));
    }

    void prewarm() override {
        model_.whenLoaded(
            model_.scope_.guard([&model = model_, instructions = instructions_, reference = reference_] {
                if (model.model_)
                    model.model_->startSession(instructions, reference)->prewarm();
            }));
    }

private:
    void ask(const std::string& prompt, AnswerSchema schema) {
        Reply reply = std::exchange(reply_, nullptr);
        if (!model_.model_) {
            reply(Error{"what asks servers is missing"});
            return;
        }
        session_ = model_.model_->startSession(instructions_, reference_);
        session_->respond(prompt, schema, std::move(reply));
    }

    ServedLanguageModel& model_;
    const std::string instructions_;
    const ModelReference reference_;
    Reply reply_;
    std::unique_ptr<LanguageModelSession> session_; ///< once it was asked
    CallbackScope scope_;
};

ServedLanguageModel::ServedLanguageModel(ServedModel choice, Executor& mainExecutor, Load load)
    : choice_(std::move(choice)), mainExecutor_(mainExecutor), load_(std::move(load)) {}

std::unique_ptr<LanguageModelSession> ServedLanguageModel::startSession(std::string instructions,
                                                                        ModelReference reference) {
    load();
    return std::make_unique<Session>(*this, std::move(instructions), std::move(reference));
}

void ServedLanguageModel::load() {
    if (state_ != State::NotLoaded)
        return;
    state_ = State::Loading;
    auto loaded = scope_.guard([this](ModelServers* servers) {
        state_ = State::Loaded;
        if (servers != nullptr)
            model_ = servers->model(choice_, mainExecutor_);
        for (const auto& task : std::exchange(waiting_, {}))
            task();
    });
    loader_.post([&executor = mainExecutor_, load = load_, loaded] {
        ModelServers* const servers = load();
        executor.post([loaded, servers]() mutable { loaded(servers); });
    });
}

void ServedLanguageModel::whenLoaded(std::function<void()> task) {
    if (state_ == State::Loaded)
        task();
    else
        waiting_.push_back(std::move(task));
}

} // namespace quillo
