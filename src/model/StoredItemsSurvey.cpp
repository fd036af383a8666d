#include "model/StoredItemsSurvey.h"

#include "model/TodoItemJson.h"

#include <simdjson.h>

#include <algorithm>
#include <cstring>

namespace quillo {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

template <class Word>
Word load(const char* bytes) {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// OPTIMIZATION: for lengths like ours compilers call memcmp; two overlapping words are compared in place.
template <std::size_t length>
bool isSame(const char* left, const char* right) {
    const auto same = [&]<class Word>(Word) {
        constexpr std::size_t last = length - sizeof(Word);
        return load<Word>(left) == load<Word>(right) && load<Word>(left + last) == load<Word>(right + last);
    };
    if constexpr (length >= 8 && length <= 16)
        return same(std::uint64_t{});
    else if constexpr (length >= 4 && length <= 8)
        return same(std::uint32_t{});
    else
        return std::memcmp(left, right, length) == 0;
}

/// Takes what it expects off the front of the text, which is UTF-8; false where something else stands.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    const char* place() const { return rest_.data(); }
    bool atEnd() const { return rest_.empty(); }

    /// OPTIMIZATION: the length is a constant, so that the comparison is a few instructions.
    template <std::size_t size>
    bool take(const char (&expected)[size]) {
        constexpr std::size_t length = size - 1;
        if (rest_.size() < length || !isSame<length>(rest_.data(), expected))
            return false;
        rest_.remove_prefix(length);
        return true;
    }

    bool takeId(Uuid& id) {
        constexpr std::size_t length = 36;
        const std::optional<Uuid> read = Uuid::parse(rest_.substr(0, length));
        if (!read || std::any_of(rest_.begin(), rest_.begin() + length, [](char c) { return c >= 'a'; }))
            return false;
        id = *read;
        rest_.remove_prefix(length);
        return true;
    }

    bool takeBoolean(bool& value) {
        value = take("true");
        return value || take("false");
    }

    bool takeString() {
        if (!take("\""))
            return false;
        // OPTIMIZATION: most strings have no escapes; these end at the first quotation mark.
        const std::string_view text = rest_.substr(0, rest_.find('"'));
        std::uint8_t special = 0; // Without branches, so that compilers make sixteen at once of it.
        for (const char c : text)
            special |= static_cast<std::uint8_t>(static_cast<std::uint8_t>(c) < 0x20) |
                       static_cast<std::uint8_t>(c == '\\');
        if (special == 0 && text.size() < rest_.size()) {
            rest_.remove_prefix(text.size() + 1);
            return true;
        }
        return takeStringWithEscapes();
    }

    /// A number that is finite for sure: with an exponent beyond two digits, or very many digits, it need not
    /// be.
    bool takeNumber() {
        constexpr std::size_t fewDigits = 32;
        take("-");
        const bool startsWithZero = rest_.starts_with('0');
        const std::size_t whole = takeDigits();
        if (whole == 0 || whole > fewDigits || (startsWithZero && whole > 1))
            return false;
        if (take(".") && takeDigits() == 0)
            return false;
        if (take("e") || take("E")) {
            take("-") || take("+");
            const std::size_t exponent = takeDigits();
            return exponent == 1 || exponent == 2;
        }
        return true;
    }

private:
    bool takeStringWithEscapes() {
        for (std::size_t at = 0; at < rest_.size(); ++at) {
            const char c = rest_[at];
            if (c == '"') {
                rest_.remove_prefix(at + 1);
                return true;
            }
            if (c == '\\')
                at += escapeLength(at);
            else if (static_cast<unsigned char>(c) < 0x20)
                return false;
        }
        return false;
    }

    std::size_t takeDigits() {
        std::size_t count = 0;
        while (count < rest_.size() && isDigit(rest_[count]))
            ++count;
        rest_.remove_prefix(count);
        return count;
    }

    /// How many characters belong to the backslash at that place; as many as there are where it makes no
    /// sense.
    std::size_t escapeLength(std::size_t at) const {
        const std::string_view escape = rest_.substr(at + 1, 5);
        if (escape.empty())
            return rest_.size();
        if (std::string_view("\"\\/bfnrt").find(escape[0]) != std::string_view::npos)
            return 1;
        // The writer escapes control characters only. Nothing below U+0100 is half of a surrogate pair.
        const bool isLow =
            escape.size() == 5 && escape.starts_with("u00") && isHexDigit(escape[3]) && isHexDigit(escape[4]);
        return isLow ? 5 : rest_.size();
    }

    std::string_view rest_;
};

bool takeItem(Scanner& scanner, Uuid& id, bool& isDone) {
    return scanner.take(R"({"id":")") && scanner.takeId(id) &&              //
           scanner.take(R"(","title":)") && scanner.takeString() &&         //
           scanner.take(R"(,"isDone":)") && scanner.takeBoolean(isDone) &&  //
           (!scanner.take(R"(,"dueDate":)") || scanner.takeNumber()) &&     //
           scanner.take(R"(,"createdAt":)") && scanner.takeNumber() &&      //
           (!scanner.take(R"(,"completedAt":)") || scanner.takeNumber()) && //
           (!scanner.take(R"(,"notificationID":)") || scanner.takeString()) && scanner.take("}");
}

} // namespace

std::optional<std::vector<StoredStretch>> surveyStoredItems(std::string_view bytes, std::size_t largest) {
    Scanner scanner(bytes);
    if (bytes.size() > largestStoredList || !simdjson::validate_utf8(bytes) || !scanner.take("["))
        return std::nullopt;
    std::vector<StoredStretch> stretches;
    for (bool more = !scanner.take("]"); more; more = scanner.take(",")) {
        if (stretches.empty() || stretches.back().ids.size() == largest) {
            stretches.emplace_back();
            stretches.back().ids.reserve(largest);
            stretches.back().done.reserve(largest);
        }
        StoredStretch& stretch = stretches.back();
        const char* start = stretch.ids.empty() ? scanner.place() : stretch.bytes.data();
        bool isDone = false;
        if (!takeItem(scanner, stretch.ids.emplace_back(), isDone))
            return std::nullopt;
        stretch.done.push_back(isDone);
        stretch.bytes = {start, static_cast<std::size_t>(scanner.place() - start)};
    }
    if (!stretches.empty() && !scanner.take("]"))
        return std::nullopt;
    return scanner.atEnd() ? std::optional(std::move(stretches)) : std::nullopt;
}

} // namespace quillo
