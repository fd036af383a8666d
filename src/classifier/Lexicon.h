/// Words that say when, also misspelt.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillo::classifier {

/// The word of the lexicon that a word seems to be.
struct Likeness {
    std::size_t word = 0;  ///< its place, from 1 on; 0 where none is like it
    std::size_t edits = 3; ///< how many slips apart they are: 0 ... 2; 3 where none is like it
};

/// Words that say when. Finds them also where they are misspelt.
class Lexicon {
public:
    Lexicon() = default;

    /// Lower-case ASCII words.
    explicit Lexicon(std::vector<std::string> words);

    std::size_t size() const { return entries_.size(); }

    /// Words of 4 ... 6 letters may have one slip, of 7 ... 14 letters two: a letter too many, one missing, a
    /// wrong one, or two swapped. The nearest counts, of several the first.
    Likeness look(std::u32string_view word) const;

private:
    struct Entry {
        std::u32string word;
        std::size_t letters; ///< which letters occur in it, a bit each
    };
    std::vector<Entry> entries_;
};

} // namespace quillo::classifier
