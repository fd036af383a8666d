#include "classifier/EmbeddedClassifier.h"

#include "base/Log.h"
#include "classifier/Answer.h"
#include "classifier/EmbeddedWeights.h"
#include "classifier/Network.h"

#include <utility>

namespace quillo {

namespace {

using namespace classifier;

constexpr std::size_t longestText = 4096; // bytes; the parser asks for less

/// The properties of the answer that were asked for, under the names by which it knows them.
Result<GeneratedContent> contentOf(const Answer& answer, AnswerSchema schema) {
    const std::pair<std::string_view, GeneratedContent::Value> known[] = {
        {"kind", answer.kind},     {"amount", answer.amount},   {"month", answer.month},
        {"day", answer.day},       {"hasTime", answer.hasTime}, {"hour", answer.hour},
        {"minute", answer.minute}, {"title", answer.title},
    };
    GeneratedContent content;
    for (const PropertyGuide& wanted : schema) {
        bool found = false;
        for (const auto& [name, value] : known) {
            if (name == wanted.name) {
                content.properties.emplace_back(name, value);
                found = true;
            }
        }
        if (!found)
            return Error{"the embedded model knows no \"" + std::string(wanted.name) + "\""};
    }
    content.score = answer.score;
    return content;
}

class EmbeddedSession : public LanguageModelSession {
public:
    EmbeddedSession(const Weights* weights, ModelReference reference)
        : weights_(weights), reference_(std::move(reference)) {}

    void respond(std::string_view prompt, AnswerSchema schema, Reply reply) override {
        if (weights_ == nullptr) {
            reply(Error{"the embedded model is not available"});
            return;
        }
        if (prompt.size() > longestText) {
            reply(Error{"the text is too long for the embedded model"});
            return;
        }
        Answer answer;
        answer.title = prompt;
        if (const std::vector<Token> tokens = tokenize(prompt); !tokens.empty())
            answer = answerTo(*weights_, prompt, tokens, look(*weights_, prompt, tokens), reference_);
        reply(contentOf(answer, schema)); // May drop this session.
    }

    void prewarm() override {} // Starting the session has unpacked the weights.

private:
    const Weights* weights_;
    const ModelReference reference_;
};

} // namespace

EmbeddedClassifier::EmbeddedClassifier() : bytes_(embeddedWeights()) {}

const Weights* EmbeddedClassifier::weights() const {
    if (!std::exchange(tried_, true)) {
        if (auto read = Weights::read(bytes_))
            weights_ = *std::move(read);
        else
            log("the embedded language model cannot be used: " + read.error().message);
        releaseEmbeddedWeights(); // They are unpacked, or good for nothing.
    }
    return weights_ ? &*weights_ : nullptr;
}

bool EmbeddedClassifier::isAvailable() const {
    return weights() != nullptr;
}

std::unique_ptr<LanguageModelSession> EmbeddedClassifier::startSession(std::string,
                                                                       ModelReference reference) {
    return std::make_unique<EmbeddedSession>(weights(), std::move(reference));
}

std::unique_ptr<LanguageModel> makeEmbeddedClassifier() {
    return std::make_unique<EmbeddedClassifier>();
}

} // namespace quillo
