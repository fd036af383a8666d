/// The JSON that is exchanged with a server that speaks as OpenAI's does.
#pragma once

#include "base/Result.h"
#include "ports/LanguageModel.h"

#include <string>
#include <string_view>

namespace quillo {

/// What a chat is about.
struct ChatQuestion {
    std::string model;
    std::string instructions;
    std::string prompt;
    AnswerSchema schema = {};
    bool schemaInPrompt = false; ///< the instructions describe the form, too
};

/// The body of a request to /v1/chat/completions. What is not said is left to the server: it is not told how
/// bold the model is to be, nor how long it may talk.
std::string encodeQuestion(const ChatQuestion& question);

/// Reads what /v1/chat/completions answers: of the first choice, a text that is nothing but one JSON object
/// of texts, whole numbers of 64 bits written without point or exponent, and truth values. Anything else is
/// an error. Which properties there are is not looked at.
Result<GeneratedContent> readAnswer(std::string_view body);

/// The body of a request to /v1/chat/completions that has a model read the instructions and say next to
/// nothing. llama-server keeps what it has read.
std::string encodeReadAhead(const std::string& model, const std::string& instructions);

/// The body of a request to Ollama's /api/chat that has it load the model.
std::string encodeLoading(const std::string& model);

/// Whether this is what Ollama, and nobody else, answers to /api/version.
bool isOllamaVersion(std::string_view body);

} // namespace quillo
