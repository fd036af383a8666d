/// Regular expressions in ICU's syntax, compiled once and searched for many times.
#pragma once

#include "unicode/Text.h"

#include <array>
#include <memory>
#include <optional>
#include <string_view>

namespace quillo::unicode {

/// One match: the whole of it and its capture groups.
class RegexMatch {
public:
    static constexpr std::size_t maximumGroups = 4;

    RegexMatch(std::u16string_view text, std::array<TextRange, maximumGroups + 1> groups)
        : text_(text), groups_(groups) {}

    TextRange range() const { return groups_[0]; }

    /// What the group captured (0 = the whole match); empty where it took no part. Valid as long as the
    /// searched text.
    std::u16string_view group(std::size_t index) const {
        return text_.substr(groups_[index].start, groups_[index].end - groups_[index].start);
    }

private:
    std::u16string_view text_;
    std::array<TextRange, maximumGroups + 1> groups_;
};

/// A compiled pattern of at most RegexMatch::maximumGroups groups. One thread at a time: searching reuses one
/// matcher.
class Regex {
public:
    enum class Case { Sensitive, Insensitive };

    /// A pattern that does not compile matches nothing.
    Regex(std::u16string_view pattern, Case sensitivity);
    ~Regex();
    Regex(Regex&&) noexcept;
    Regex& operator=(Regex&&) noexcept;

    /// The first match in the text, if there is one. A search that ICU gives up on finds nothing.
    std::optional<RegexMatch> search(std::u16string_view text) const;

private:
    struct Compiled;
    std::unique_ptr<Compiled> compiled_;
};

} // namespace quillo::unicode
