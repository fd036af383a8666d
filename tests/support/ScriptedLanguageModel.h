/// In-memory twin of the language model port.
#pragma once

#include "ports/LanguageModel.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillo::support {

/// Answers what the test says, at once or when it says so, and keeps what it was asked.
class ScriptedLanguageModel : public LanguageModel {
public:
    using Answer = Result<GeneratedContent>;

    /// One session, as far as it went.
    struct Conversation {
        std::string instructions;
        ModelReference reference;
        bool prewarmed = false;
        std::optional<std::string> prompt; ///< none before it is asked
        std::vector<PropertyGuide> schema;
        bool dropped = false;
        LanguageModelSession::Reply reply; ///< of a request without an answer; kept when it is dropped
    };

    bool isAvailable() const override {
        ++availabilityQueries;
        return available;
    }

    std::unique_ptr<LanguageModelSession> startSession(std::string instructions,
                                                       ModelReference reference) override {
        auto conversation = std::make_shared<Conversation>();
        conversation->instructions = std::move(instructions);
        conversation->reference = std::move(reference);
        conversations.push_back(conversation);
        return std::make_unique<Session>(*this, std::move(conversation));
    }

    /// How many requests wait for their answer.
    std::size_t waiting() const {
        std::size_t count = 0;
        for (const auto& conversation : conversations)
            count += conversation->reply && !conversation->dropped;
        return count;
    }

    /// Answers the request about that text that waits longest; false where none waits.
    bool answer(std::string_view prompt, const Answer& given) {
        for (const auto& conversation : conversations) {
            if (conversation->reply && !conversation->dropped && conversation->prompt == prompt) {
                std::exchange(conversation->reply, nullptr)(given);
                return true;
            }
        }
        return false;
    }

    bool available = true;
    std::function<Answer(std::string_view prompt)> answersAtOnce; ///< without it, requests wait
    std::vector<std::shared_ptr<Conversation>> conversations;     ///< in the order in which they began
    mutable int availabilityQueries = 0;

private:
    class Session : public LanguageModelSession {
    public:
        Session(ScriptedLanguageModel& model, std::shared_ptr<Conversation> conversation)
            : model_(model), conversation_(std::move(conversation)) {}
        ~Session() override { conversation_->dropped = true; }

        void respond(std::string_view prompt, AnswerSchema schema, Reply reply) override {
            conversation_->prompt = std::string(prompt);
            conversation_->schema.assign(schema.begin(), schema.end());
            if (model_.answersAtOnce)
                reply(model_.answersAtOnce(prompt));
            else
                conversation_->reply = std::move(reply);
        }

        void prewarm() override { conversation_->prewarmed = true; }

    private:
        ScriptedLanguageModel& model_;
        const std::shared_ptr<Conversation> conversation_;
    };
};

/// What a model answers about a text, as far as it matters: the rest is 0.
inline GeneratedContent generatedContent(std::string kind, std::string title = {}) {
    return {.properties = {{"kind", std::move(kind)},
                           {"amount", std::int64_t{0}},
                           {"month", std::int64_t{0}},
                           {"day", std::int64_t{0}},
                           {"hasTime", false},
                           {"hour", std::int64_t{0}},
                           {"minute", std::int64_t{0}},
                           {"title", std::move(title)}},
            .score = std::nullopt};
}

/// Such an answer for a time of day.
inline GeneratedContent generatedContentAt(std::string kind, std::int64_t hour, std::int64_t minute,
                                           std::string title = {}) {
    GeneratedContent content = generatedContent(std::move(kind), std::move(title));
    content.properties[4].second = true;
    content.properties[5].second = hour;
    content.properties[6].second = minute;
    return content;
}

} // namespace quillo::support
