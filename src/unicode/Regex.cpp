#include "unicode/Regex.h"

#include <unicode/uregex.h>

#include <algorithm>
#include <cstdint>

namespace quillo::unicode {

struct Regex::Compiled {
    URegularExpression* matcher = nullptr;
    std::size_t groups = 0;

    ~Compiled() { uregex_close(matcher); }
};

Regex::Regex(std::u16string_view pattern, Case sensitivity) {
    UErrorCode status = U_ZERO_ERROR;
    const std::uint32_t flags = sensitivity == Case::Insensitive ? UREGEX_CASE_INSENSITIVE : 0;
    auto compiled = std::make_unique<Compiled>();
    compiled->matcher =
        uregex_open(pattern.data(), static_cast<std::int32_t>(pattern.size()), flags, nullptr, &status);
    if (U_FAILURE(status))
        return;
    compiled->groups = static_cast<std::size_t>(uregex_groupCount(compiled->matcher, &status));
    if (U_SUCCESS(status) && compiled->groups <= RegexMatch::maximumGroups)
        compiled_ = std::move(compiled);
}

Regex::~Regex() = default;
Regex::Regex(Regex&&) noexcept = default;
Regex& Regex::operator=(Regex&&) noexcept = default;

std::optional<RegexMatch> Regex::search(std::u16string_view text) const {
    if (!compiled_)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    // An empty view may point nowhere, which ICU takes for a missing text.
    const char16_t* units = text.empty() ? u"" : text.data();
    uregex_setText(compiled_->matcher, units, static_cast<std::int32_t>(text.size()), &status);
    if (!uregex_find(compiled_->matcher, 0, &status) || U_FAILURE(status))
        return std::nullopt;
    std::array<TextRange, RegexMatch::maximumGroups + 1> groups{};
    for (std::size_t group = 0; group <= compiled_->groups; ++group) {
        const auto number = static_cast<std::int32_t>(group);
        // -1 where the group took no part in the match.
        const std::int32_t start = std::max(0, uregex_start(compiled_->matcher, number, &status));
        const std::int32_t end = std::max(0, uregex_end(compiled_->matcher, number, &status));
        groups[group] = {static_cast<std::size_t>(start), static_cast<std::size_t>(end)};
    }
    if (U_FAILURE(status))
        return std::nullopt;
    return RegexMatch(text, groups);
}

} // namespace quillo::unicode
