#include "parser/Vocabulary.h"

#include <deque>
#include <vector>

namespace quillo {

namespace {

/// Classes of code units: everything that no word contains is alike and leads back to the start.
constexpr std::size_t classCount = 29;

constexpr std::uint8_t classOf(char16_t unit) {
    if (unit >= u'a' && unit <= u'z')
        return static_cast<std::uint8_t>(unit - u'a' + 1);
    switch (unit) {
    case u' ':
        return 27;
    case u'/':
        return 28;
    default:
        return 0;
    }
}

/// The Aho-Corasick automaton of the vocabulary: one step a code unit, whatever the number of words.
class Automaton {
public:
    Automaton() : nodes_(1) {
        // The trie of the words.
        for (std::size_t place = 0; place < vocabulary.size(); ++place) {
            std::size_t at = 0;
            for (const char16_t unit : vocabulary[place]) {
                const std::uint8_t step = classOf(unit);
                if (nodes_[at].next[step] == 0) {
                    nodes_[at].next[step] = static_cast<std::uint16_t>(nodes_.size());
                    nodes_.emplace_back();
                }
                at = nodes_[at].next[step];
            }
            nodes_[at].words.insert(place);
        }
        // Breadth first, so that the longest proper suffix of a node is finished before the node itself:
        // missing steps are taken from that suffix, and what ends there ends here as well.
        std::deque<std::size_t> waiting;
        std::vector<std::size_t> suffix(nodes_.size(), 0);
        for (const std::uint16_t child : nodes_[0].next) {
            if (child != 0)
                waiting.push_back(child);
        }
        while (!waiting.empty()) {
            const std::size_t at = waiting.front();
            waiting.pop_front();
            nodes_[at].words.insert(nodes_[suffix[at]].words);
            for (std::size_t step = 0; step < classCount; ++step) {
                std::uint16_t& child = nodes_[at].next[step];
                const std::uint16_t fallback = nodes_[suffix[at]].next[step];
                if (child == 0) {
                    child = fallback;
                } else {
                    suffix[child] = fallback;
                    waiting.push_back(child);
                }
            }
        }
    }

    Words wordsIn(std::u16string_view text) const {
        Words words;
        std::size_t at = 0;
        for (const char16_t unit : text) {
            at = nodes_[at].next[classOf(unit)];
            words.insert(nodes_[at].words);
        }
        return words;
    }

private:
    struct Node {
        std::array<std::uint16_t, classCount> next{};
        Words words;
    };
    std::vector<Node> nodes_;
};

} // namespace

Sightings look(std::u16string_view loweredText) {
    static const Automaton automaton;
    Sightings sightings{automaton.wordsIn(loweredText), false};
    for (const char16_t unit : loweredText)
        sightings.digit |= (unit >= u'0' && unit <= u'9') || unit >= 0x80;
    return sightings;
}

} // namespace quillo
