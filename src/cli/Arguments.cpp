#include "cli/Arguments.h"

#include "cli/WellFormed.h"

#include <algorithm>

namespace quillo::cli {

namespace {

/// An option as it was typed: --name, --name=value, -n, -nvalue or -n=value.
struct TypedOption {
    std::string name; ///< hyphens included
    std::optional<std::string> value;
};

TypedOption typedOption(const std::string& word) {
    const std::size_t equals = word.find('=');
    const std::size_t nameEnd = word.starts_with("--") ? equals : std::size_t{2};
    if (nameEnd >= word.size())
        return {word, std::nullopt};
    return {word.substr(0, nameEnd), word.substr(nameEnd == equals ? nameEnd + 1 : nameEnd)};
}

} // namespace

Result<Arguments> Arguments::read(const std::vector<std::string>& words, const std::vector<Option>& options) {
    Arguments arguments;
    bool optionsEnded = false;
    for (std::size_t at = 0; at < words.size(); ++at) {
        const std::string& word = words[at];
        if (optionsEnded || word == "-" || !word.starts_with('-')) {
            arguments.words_.push_back(word);
            continue;
        }
        if (word == "--") {
            optionsEnded = true;
            continue;
        }
        if (word == "-h" || word == "--help") {
            arguments.options_["help"];
            continue;
        }
        TypedOption typed = typedOption(word);
        const auto known = std::find_if(options.begin(), options.end(), [&](const Option& option) {
            return typed.name == "--" + std::string(option.name) ||
                   (option.letter != 0 && typed.name == std::string{'-', option.letter});
        });
        if (known == options.end() || (typed.value && known->value.empty()))
            return Error{"unknown option " + word + " (-- ends the options)"};
        if (!known->value.empty() && !typed.value) {
            if (++at == words.size())
                return Error{word + " needs a value"};
            typed.value = words[at];
        }
        std::string& value = arguments.options_[std::string(known->name)];
        value = std::move(typed.value).value_or("");
        if (!known->isFile)
            arguments.malformed_ |= makeWellFormed(value);
    }
    for (std::string& word : arguments.words_)
        arguments.malformed_ |= makeWellFormed(word);
    return arguments;
}

std::optional<std::string> Arguments::value(std::string_view option) const {
    const auto found = options_.find(option);
    return found == options_.end() ? std::nullopt : std::optional(found->second);
}

std::string Arguments::text(std::size_t first) const {
    std::string joined;
    for (std::size_t at = first; at < words_.size(); ++at) {
        if (at > first)
            joined += ' ';
        joined += words_[at];
    }
    return joined;
}

} // namespace quillo::cli
