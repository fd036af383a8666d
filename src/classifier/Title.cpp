#include "classifier/Title.h"

#include <algorithm>

namespace quillo::classifier {

namespace {

/// Marks that stand at a word's end.
constexpr std::u32string_view closing = U",.;:!?)…";

/// Takes away the marks that joined a title to what was cut off.
std::string_view withoutJoints(std::string_view title) {
    constexpr std::string_view joints[] = {" ", ",", ";", ":", "-", "–", "—", "|", "@"};
    const auto begins = [&](std::string_view mark) { return title.starts_with(mark); };
    const auto ends = [&](std::string_view mark) { return title.ends_with(mark); };
    for (;;) {
        if (const auto* const mark = std::ranges::find_if(joints, begins); mark != std::end(joints))
            title.remove_prefix(mark->size());
        else if (begins(".") || begins(")"))
            title.remove_prefix(1);
        else
            break;
    }
    for (;;) {
        if (const auto* const mark = std::ranges::find_if(joints, ends); mark != std::end(joints))
            title.remove_suffix(mark->size());
        else if (ends("("))
            title.remove_suffix(1);
        else
            break;
    }
    return title;
}

/// Whether the token is a comma that ends what is cut, and with it the words before.
bool endsBoth(const std::vector<Token>& tokens, const std::vector<Role>& roles, std::size_t place) {
    constexpr std::u32string_view marks = U",;.";
    return place > 0 && place + 1 < tokens.size() &&
           marks.find(tokens[place].word.front()) != std::u32string_view::npos &&
           roles[place - 1] != Role::Keep && roles[place + 1] == Role::Keep &&
           tokens[place].end < tokens[place + 1].start;
}

} // namespace

std::string titleOf(std::string_view text, const std::vector<Token>& tokens, const std::vector<Role>& roles) {
    std::string title;
    const Token* last = nullptr;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (roles[i] != Role::Keep && (last == nullptr || !endsBoth(tokens, roles, i)))
            continue;
        const Token& token = tokens[i];
        if (last != nullptr) {
            const bool cut = last != &tokens[i - 1];
            // A comma behind what was cut belongs to the word before.
            const bool closes = closing.find(token.word.front()) != std::u32string_view::npos &&
                                tokens[i - 1].end == token.start;
            if (!closes && (cut || last->end < token.start))
                title += ' ';
        }
        title += text.substr(token.start, token.end - token.start);
        last = &token;
    }
    return std::string(withoutJoints(title));
}

} // namespace quillo::classifier
