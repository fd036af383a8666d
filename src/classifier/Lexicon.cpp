#include "classifier/Lexicon.h"

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>

namespace quillo::classifier {

namespace {

constexpr std::size_t shortestMisspelt = 4;
constexpr std::size_t longestMisspelt = 14;

constexpr std::size_t slipsIn(std::u32string_view word) {
    return word.size() < 7 ? 1 : 2;
}

std::size_t lettersOf(std::u32string_view word) {
    std::size_t letters = 0;
    for (const char32_t c : word)
        letters |= std::size_t(1) << (c >= U'a' && c <= U'z' ? c - U'a' : 26);
    return letters;
}

/// How many slips make one word of the other; limit + 1 where there are more. Words of up to 16 letters.
std::size_t slipsBetween(std::u32string_view a, std::u32string_view b, std::size_t limit) {
    using Row = std::array<std::size_t, 17>;
    Row beforeLast{};
    Row last{};
    Row row{};
    std::iota(last.begin(), last.end(), std::size_t(0));
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        std::size_t least = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            std::size_t slips =
                std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                slips = std::min(slips, beforeLast[j - 2] + 1);
            row[j] = slips;
            least = std::min(least, slips);
        }
        if (least > limit)
            return limit + 1;
        beforeLast = last;
        last = row;
    }
    return std::min(last[b.size()], limit + 1);
}

} // namespace

Lexicon::Lexicon(std::vector<std::string> words) {
    for (const std::string& word : words) {
        std::u32string wide(word.begin(), word.end());
        const std::size_t letters = lettersOf(wide);
        entries_.push_back({std::move(wide), letters});
    }
}

Likeness Lexicon::look(std::u32string_view word) const {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (entries_[i].word == word)
            return {i + 1, 0};
    }
    Likeness best;
    if (word.size() < shortestMisspelt || word.size() > longestMisspelt)
        return best;
    const std::size_t limit = slipsIn(word);
    const std::size_t letters = lettersOf(word);
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const Entry& entry = entries_[i];
        const std::size_t longer = std::max(entry.word.size(), word.size());
        const std::size_t shorter = std::min(entry.word.size(), word.size());
        // A slip changes two letters at most; that spares most comparisons.
        if (entry.word.size() < shortestMisspelt || entry.word.size() > longestMisspelt + 2 ||
            longer - shorter > limit ||
            static_cast<std::size_t>(std::popcount(entry.letters ^ letters)) > 2 * limit)
            continue;
        const std::size_t slips = slipsBetween(word, entry.word, limit);
        if (slips <= limit && slips < best.edits)
            best = {i + 1, slips};
    }
    return best;
}

} // namespace quillo::classifier
