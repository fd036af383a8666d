#include "modelservers/HttpLanguageModel.h"

#include "modelservers/ChatMessages.h"
#include "modelservers/ModelNames.h"

#include <optional>
#include <utility>

namespace quillo {

namespace {

/// How long it is taken for granted which model a server has first.
constexpr std::chrono::seconds memory{10};

/// How long a server may take to load a model: some load it only for as long as somebody waits.
constexpr std::chrono::minutes longestWarmUp{2};

using HearName = std::function<void(std::string)>;

} // namespace

/// Has the form filled in; asks first which model there is, where none is named.
class HttpLanguageModel::Question final : public Exchange {
public:
    using Answered = std::function<void(const Result<GeneratedContent>&)>;

    Question(std::string address, ChatQuestion question, HearName hearName, Answered answered)
        : address_(std::move(address)), question_(std::move(question)), hearName_(std::move(hearName)),
          answered_(std::move(answered)) {}

    HttpRequest first() override { return question_.model.empty() ? modelNamesRequest(address_) : ask(); }

    std::optional<HttpRequest> next(const Result<std::string>& answer) override {
        if (!answer) {
            answered_(answer.error());
        } else if (question_.model.empty()) {
            const Result<std::vector<std::string>> names = readModelNames(*answer);
            if (names) {
                question_.model = names->front();
                hearName_(names->front());
                return ask();
            }
            answered_(names.error());
        } else {
            answered_(readAnswer(*answer));
        }
        return std::nullopt;
    }

private:
    HttpRequest ask() const { return {address_ + "/v1/chat/completions", encodeQuestion(question_)}; }

    const std::string address_;
    ChatQuestion question_;
    const HearName hearName_;
    const Answered answered_;
};

/// Has the model loaded (Ollama) or the instructions read (llama-server), each in its own way. Other servers
/// are left alone.
class HttpLanguageModel::WarmUp final : public Exchange {
public:
    WarmUp(std::string address, std::string model, std::string instructions, HearName hearName,
           std::function<void()> over)
        : address_(std::move(address)), model_(std::move(model)), instructions_(std::move(instructions)),
          hearName_(std::move(hearName)), over_(std::move(over)) {}

    HttpRequest first() override { return modelNamesRequest(address_); }

    std::optional<HttpRequest> next(const Result<std::string>& answer) override {
        std::optional<HttpRequest> request = answer ? step(*answer) : std::nullopt;
        if (!request)
            over_();
        return request;
    }

private:
    enum class Asked { Names, Version, Model };

    std::optional<HttpRequest> step(const std::string& answer) {
        switch (asked_) {
        case Asked::Names:
            return afterNames(answer);
        case Asked::Version:
            asked_ = Asked::Model;
            if (!isOllamaVersion(answer))
                return std::nullopt;
            return HttpRequest{address_ + "/api/chat", encodeLoading(model_)};
        case Asked::Model:
            break;
        }
        return std::nullopt;
    }

    std::optional<HttpRequest> afterNames(const std::string& answer) {
        const Result<std::vector<std::string>> names = readModelNames(answer);
        if (!names)
            return std::nullopt;
        hearName_(names->front());
        if (model_.empty())
            model_ = names->front();
        if (isOfLlamaServer(answer)) {
            asked_ = Asked::Model;
            return HttpRequest{address_ + "/v1/chat/completions", encodeReadAhead(model_, instructions_)};
        }
        asked_ = Asked::Version;
        return HttpRequest{address_ + "/api/version"};
    }

    const std::string address_;
    std::string model_;
    const std::string instructions_;
    const HearName hearName_;
    const std::function<void()> over_;
    Asked asked_ = Asked::Names;
};

class HttpLanguageModel::Session final : public LanguageModelSession {
public:
    Session(HttpLanguageModel& model, std::string instructions)
        : model_(model), instructions_(std::move(instructions)) {}

    ~Session() override {
        if (ticket_)
            model_.transfers_.giveUp(*ticket_);
    }

    void respond(std::string_view prompt, AnswerSchema schema, Reply reply) override {
        reply_ = std::move(reply);
        auto answered = scope_.guard([this](const Result<GeneratedContent>& content) {
            ticket_.reset();
            const Reply told = std::exchange(reply_, nullptr);
            told(content); // It may drop this session.
        });
        auto question = std::make_unique<Question>(
            model_.choice_.address,
            ChatQuestion{model_.knownName(), instructions_, std::string(prompt), schema,
                         model_.choice_.schemaInPrompt},
            model_.rememberLater(),
            [&executor = model_.mainExecutor_, answered](const Result<GeneratedContent>& content) {
                executor.post([answered, content]() mutable { answered(content); });
            });
        ticket_ = model_.transfers_.start(std::move(question), model_.limit_);
    }

    void prewarm() override { model_.warmUp(instructions_); }

private:
    HttpLanguageModel& model_;
    const std::string instructions_;
    Reply reply_;
    std::optional<Transfers::Ticket> ticket_; ///< of what is under way
    CallbackScope scope_;
};

HttpLanguageModel::HttpLanguageModel(ServedModel choice, Executor& mainExecutor,
                                     std::chrono::milliseconds limit)
    : choice_(std::move(choice)), mainExecutor_(mainExecutor), limit_(limit) {}

std::unique_ptr<LanguageModelSession> HttpLanguageModel::startSession(std::string instructions,
                                                                      ModelReference) {
    return std::make_unique<Session>(*this, std::move(instructions));
}

void HttpLanguageModel::warmUp(const std::string& instructions) {
    if (std::exchange(warmingUp_, true))
        return;
    auto over = scope_.guard([this] { warmingUp_ = false; });
    auto exchange = std::make_unique<WarmUp>(choice_.address, choice_.model, instructions, rememberLater(),
                                             [&executor = mainExecutor_, over] { executor.post(over); });
    transfers_.start(std::move(exchange), longestWarmUp);
}

std::string HttpLanguageModel::knownName() const {
    if (!choice_.model.empty())
        return choice_.model;
    return std::chrono::steady_clock::now() < firstSeen_ + memory ? first_ : "";
}

std::function<void(std::string)> HttpLanguageModel::rememberLater() {
    auto remember = scope_.guard([this](const std::string& name) {
        first_ = name;
        firstSeen_ = std::chrono::steady_clock::now();
    });
    return [&executor = mainExecutor_, remember](const std::string& name) {
        executor.post([remember, name]() mutable { remember(name); });
    };
}

} // namespace quillo
