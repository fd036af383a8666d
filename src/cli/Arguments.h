/// What a command was given behind its name.
#pragma once

#include "base/Result.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillo::cli {

/// An option that a command knows: --name, or --name VALUE. All know --help, also as -h.
struct Option {
    std::string_view name;
    std::string_view explanation;
    std::string_view value = {}; ///< what its value is called in explanations; empty if it takes none
    char letter = 0;             ///< its short form, if it has one: -n VALUE, or -nVALUE
    bool isFile = false;         ///< its value names a file: bytes, in whatever encoding
};

class Arguments {
public:
    /// Sorts `words`, those behind the command's name, into options and the rest. "--" ends the options.
    /// Malformed UTF-8 reads as U+FFFD, but for names of files, see malformed(). An option that is not known,
    /// or lacks its value, is an error.
    static Result<Arguments> read(const std::vector<std::string>& words, const std::vector<Option>& options);

    bool has(std::string_view option) const { return options_.find(option) != options_.end(); }
    std::optional<std::string> value(std::string_view option) const;

    /// What is no option, in order.
    const std::vector<std::string>& words() const { return words_; }

    /// The words from `first` on as one text, joined by blanks.
    std::string text(std::size_t first = 0) const;

    /// Whether there was malformed UTF-8 in them.
    bool malformed() const { return malformed_; }

private:
    std::map<std::string, std::string, std::less<>> options_;
    std::vector<std::string> words_;
    bool malformed_ = false;
};

} // namespace quillo::cli
