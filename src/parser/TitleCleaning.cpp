#include "parser/TitleCleaning.h"

#include <algorithm>

namespace quillo {

std::string cleanTitle(std::u16string_view text, std::vector<unicode::TextRange> ranges) {
    if (ranges.empty())
        return unicode::toUtf8(unicode::trim(text));

    std::sort(ranges.begin(), ranges.end(),
              [](const auto& left, const auto& right) { return left.start < right.start; });
    std::u16string kept;
    std::size_t at = 0;
    for (const unicode::TextRange& range : ranges) {
        if (range.start > at)
            kept.append(text.substr(at, range.start - at));
        at = std::max(at, range.end);
    }
    kept.append(text.substr(at));

    const std::u16string collapsed = unicode::collapseWhiteSpace(kept);
    std::u16string_view title = unicode::trim(collapsed);
    constexpr std::u16string_view loose = u",;.: ";
    title.remove_prefix(std::min(title.find_first_not_of(loose), title.size()));
    title = title.substr(0, title.find_last_not_of(loose) + 1);
    return unicode::toUtf8(title);
}

} // namespace quillo
