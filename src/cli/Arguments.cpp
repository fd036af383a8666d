#include "cli/Arguments.h"

#include "base/Log.h"
#include "cli/WellFormed.h"

#include <getopt.h>

namespace quillo::cli {

Result<Arguments> Arguments::read(const std::vector<std::string>& words, const std::vector<Option>& options) {
    std::vector<option> known;
    for (const Option& each : options)
        known.push_back({each.name, each.takesValue ? required_argument : no_argument, nullptr, 0});
    known.push_back({});

    // getopt_long wants a program's argument vector: a name in front, a null pointer behind. It reorders the
    // pointers so that the words stand behind the options.
    std::vector<std::string> given = words;
    std::string program = "quillo";
    std::vector<char*> pointers{program.data()};
    for (std::string& word : given)
        pointers.push_back(word.data());
    const int count = static_cast<int>(pointers.size());
    pointers.push_back(nullptr);

    Arguments arguments;
    optind = 0; // Starts over; see getopt(3), "Notes".
    opterr = 0;
    int place = 0;
    for (;;) {
        const int before = optind == 0 ? 1 : optind;
        const int result = getopt_long(count, pointers.data(), ":", known.data(), &place);
        if (result == -1)
            break;
        const char* current = pointers[static_cast<std::size_t>(optind > before ? optind - 1 : before)];
        if (result == ':')
            return Error{std::string(current) + " needs a value"};
        if (result == '?')
            return Error{"unknown option " + std::string(current)};
        arguments.options_[known[static_cast<std::size_t>(place)].name] = optarg != nullptr ? optarg : "";
    }
    for (int at = optind; at < count; ++at)
        arguments.words_.emplace_back(pointers[static_cast<std::size_t>(at)]);

    bool replaced = false;
    for (std::string& word : arguments.words_)
        replaced |= makeWellFormed(word);
    for (auto& [name, value] : arguments.options_)
        replaced |= makeWellFormed(value);
    if (replaced)
        log("malformed characters read as U+FFFD");
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
