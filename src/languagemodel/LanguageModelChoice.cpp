#include "languagemodel/LanguageModelChoice.h"

#include "languagemodel/ServerAddress.h"

#include <simdjson.h>

#include <algorithm>
#include <cstddef>

namespace quillo {

namespace {

constexpr std::string_view embedded = "embedded";
constexpr std::string_view none = "none";
constexpr std::string_view schemaInPrompt = "--schema-in-prompt ";
constexpr std::size_t longestModel = 1024;

bool isModelName(std::string_view name) {
    return name.size() <= longestModel && simdjson::validate_utf8(name) &&
           std::none_of(name.begin(), name.end(),
                        [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; });
}

} // namespace

Result<LanguageModelChoice> readLanguageModelChoice(std::string_view text) {
    if (text == embedded)
        return LanguageModelChoice(EmbeddedModel{});
    if (text == none)
        return LanguageModelChoice(NoModel{});
    const bool described = text.starts_with(schemaInPrompt);
    if (described)
        text.remove_prefix(schemaInPrompt.size());
    const std::size_t blank = std::min(text.find(' '), text.size());
    const Result<std::string> address = readServerAddress(text.substr(0, blank));
    if (!address)
        return Error{address.error().message + ", nor \"embedded\" or \"none\""};
    const std::string_view model = text.substr(std::min(blank + 1, text.size()));
    if (!isModelName(model))
        return Error{"no model has such a name"};
    return LanguageModelChoice(ServedModel{*address, std::string(model), described});
}

std::string toText(const LanguageModelChoice& choice) {
    if (std::holds_alternative<EmbeddedModel>(choice))
        return std::string(embedded);
    if (std::holds_alternative<NoModel>(choice))
        return std::string(none);
    const auto& served = std::get<ServedModel>(choice);
    return std::string(served.schemaInPrompt ? schemaInPrompt : "") + served.address +
           (served.model.empty() ? "" : " " + served.model);
}

} // namespace quillo
