#include "cli/Arguments.h"

#include "cli/WellFormed.h"

#include <algorithm>

namespace quillo::cli {

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
        const std::size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        const auto known = std::find_if(options.begin(), options.end(), [&](const Option& option) {
            return name == "--" + std::string(option.name);
        });
        const bool hasValue = equals != std::string::npos;
        if (known == options.end() || (hasValue && known->value.empty()))
            return Error{"unknown option " + word + " (-- ends the options)"};
        std::string value;
        if (hasValue)
            value = word.substr(equals + 1);
        else if (!known->value.empty() && ++at == words.size())
            return Error{word + " needs a value"};
        else if (!known->value.empty())
            value = words[at];
        arguments.options_[std::string(known->name)] = std::move(value);
    }

    for (std::string& word : arguments.words_)
        arguments.malformed_ |= makeWellFormed(word);
    for (auto& [name, value] : arguments.options_)
        arguments.malformed_ |= makeWellFormed(value);
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
