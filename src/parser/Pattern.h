/// A pattern of the rules: compiled at its first use and kept, and not run where it cannot match.
#pragma once

#include "parser/Vocabulary.h"
#include "unicode/Regex.h"

#include <optional>
#include <string_view>

namespace quillo {

/// What a text must hold for a pattern to have a chance.
struct Needs {
    Words anyOf;
    Words andAnyOf = {};
    bool digit = false;
};

/// Belongs to the main thread.
class Pattern {
public:
    constexpr Pattern(std::u16string_view source, unicode::Regex::Case sensitivity, Needs needs)
        : source_(source), sensitivity_(sensitivity), needs_(needs) {}

    std::u16string_view source() const { return source_; }
    unicode::Regex::Case sensitivity() const { return sensitivity_; }

    /// The first match in `text`; `sightings` are those of the text in lower case.
    std::optional<unicode::RegexMatch> search(std::u16string_view text, const Sightings& sightings) const {
        if (!sightings.allow(needs_.anyOf, needs_.andAnyOf, needs_.digit))
            return std::nullopt;
        if (!compiled_)
            compiled_.emplace(source_, sensitivity_);
        return compiled_->search(text);
    }

private:
    std::u16string_view source_;
    unicode::Regex::Case sensitivity_;
    Needs needs_;
    mutable std::optional<unicode::Regex> compiled_;
};

} // namespace quillo
