/// Which language model the user wants to be asked.
#pragma once

#include "base/Result.h"

#include <string>
#include <string_view>
#include <variant>

namespace quillo {

/// The one that this program brings along.
struct EmbeddedModel {
    friend bool operator==(const EmbeddedModel&, const EmbeddedModel&) = default;
};

struct NoModel {
    friend bool operator==(const NoModel&, const NoModel&) = default;
};

/// One of a server that speaks as OpenAI's does: llama-server, Ollama, LM Studio.
struct ServedModel {
    std::string address;         ///< as readServerAddress() gives it
    std::string model = {};      ///< what the server calls it; empty: the first that it has
    bool schemaInPrompt = false; ///< the form that is to be filled in is described in words, too

    friend bool operator==(const ServedModel&, const ServedModel&) = default;
};

using LanguageModelChoice = std::variant<EmbeddedModel, NoModel, ServedModel>;

/// Reads "embedded", "none" or "[--schema-in-prompt ]ADDRESS[ MODEL]", as typed. An error is one in words for
/// the user.
Result<LanguageModelChoice> readLanguageModelChoice(std::string_view text);

/// The form that readLanguageModelChoice() reads.
std::string toText(const LanguageModelChoice& choice);

} // namespace quillo
