#include "classifier/Weights.h"

#include "classifier/Shape.h"

#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace quillo::classifier {

namespace {

constexpr std::string_view magic = "QLLOWGT1";
constexpr std::size_t longestText = 16 * 1024;
constexpr std::size_t mostNumbers = 400'000;

std::uint64_t numberIn(std::span<const unsigned char> bytes) {
    std::uint64_t value = 0;
    for (std::size_t i = bytes.size(); i > 0; --i)
        value = (value << 8) | bytes[i - 1];
    return value;
}

std::uint64_t hashOf(std::span<const unsigned char> bytes) {
    std::uint64_t hash = 0xCBF29CE484222325;
    const auto add = [&](std::span<const unsigned char> word) {
        hash = (hash ^ numberIn(word)) * 0x100000001B3;
    };
    while (bytes.size() >= 8) {
        add(bytes.first<8>());
        bytes = bytes.subspan(8);
    }
    add(bytes);
    return hash;
}

/// IEEE 754 binary16 to binary32, exactly, for finite numbers: with the exponent moved to its new place it is
/// too small by the difference of the two biases.
float wide(std::uint16_t half) {
    const std::uint32_t sign = std::uint32_t(half & 0x8000U) << 16;
    const float value = std::bit_cast<float>(std::uint32_t(half & 0x7FFFU) << 13) * 0x1p112F;
    return std::bit_cast<float>(sign | std::bit_cast<std::uint32_t>(value));
}

std::vector<std::string> wordsOf(std::string_view line) {
    std::vector<std::string> words;
    while (!line.empty()) {
        const std::size_t end = std::min(line.find(' '), line.size());
        words.emplace_back(line.substr(0, end));
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return words;
}

/// Reads on from where it is; after an error it yields nothing more.
class Reader {
public:
    explicit Reader(std::span<const unsigned char> bytes) : left_(bytes) {}

    bool failed() const { return problem_.has_value(); }
    Error error() const { return {problem_.value_or("it is longer than it should be")}; }
    bool atEnd() const { return left_.empty(); }

    void fail(std::string problem) {
        if (!problem_)
            problem_ = std::move(problem);
        left_ = {};
    }

    std::span<const unsigned char> take(std::size_t count) {
        if (count > left_.size()) {
            fail("it ends too soon");
            return {};
        }
        const auto taken = left_.first(count);
        left_ = left_.subspan(count);
        return taken;
    }

    std::uint64_t number(std::size_t bytes) { return numberIn(take(bytes)); }

    std::string_view text(std::size_t length) {
        const auto bytes = take(length);
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }

    std::span<const unsigned char> rest() const { return left_; }

    Matrix matrix(std::size_t rows, std::size_t columns) {
        if (number(4) != rows || number(4) != columns || rows * columns > mostNumbers) {
            fail("a matrix has another size than the network");
            return {};
        }
        Matrix matrix{rows, columns, {}};
        const auto bytes = take(rows * columns * 2);
        if (failed())
            return {};
        matrix.numbers.resize(rows * columns);
        bool allFinite = true;
        for (std::size_t i = 0; i < matrix.numbers.size(); ++i) {
            const auto half = static_cast<std::uint16_t>(bytes[2 * i] | (bytes[2 * i + 1] << 8));
            allFinite &= (half & 0x7C00U) != 0x7C00U;
            matrix.numbers[i] = wide(half);
        }
        if (!allFinite)
            fail("a number is none");
        return matrix;
    }

    Layer layer(std::size_t rows, std::size_t columns) {
        Layer layer;
        layer.weights = matrix(rows, columns);
        layer.bias = matrix(1, columns).numbers;
        return layer;
    }

private:
    std::span<const unsigned char> left_;
    std::optional<std::string> problem_;
};

std::vector<int> numbersOf(std::string_view line, Reader& reader) {
    std::vector<int> numbers;
    for (const std::string& word : wordsOf(line)) {
        int value = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
        if (error != std::errc() || end != word.data() + word.size() || value < 0 || value > 1000)
            reader.fail("a number of its vocabulary is none");
        numbers.push_back(value);
    }
    return numbers;
}

/// Characters that stand in one line, without blanks between them; two or three bytes at most each.
std::unordered_map<char32_t, std::size_t> charactersOf(std::string_view line, Reader& reader) {
    std::unordered_map<char32_t, std::size_t> places;
    for (std::size_t at = 0; at < line.size();) {
        const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(line[at + i]); };
        const std::size_t length = byte(0) < 0x80 ? 1 : byte(0) < 0xE0 ? 2 : 3;
        if (at + length > line.size()) {
            reader.fail("its characters are not UTF-8");
            break;
        }
        char32_t code = length == 1 ? byte(0) : length == 2 ? byte(0) & 0x1FU : byte(0) & 0x0FU;
        for (std::size_t i = 1; i < length; ++i)
            code = (code << 6) | (byte(i) & 0x3FU);
        places.emplace(code, places.size() + 2);
        at += length;
    }
    return places;
}

std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

} // namespace

Result<Weights> Weights::read(std::span<const unsigned char> bytes) {
    Reader reader(bytes);
    if (reader.text(magic.size()) != magic)
        return Error{"it is no file of weights"};
    const std::uint64_t hash = reader.number(8);
    if (reader.failed() || hash != hashOf(reader.rest()))
        return Error{"it is damaged"};

    Weights weights;
    const std::uint64_t length = reader.number(4);
    if (length > longestText)
        return Error{"its vocabulary is too long"};
    std::string_view text = reader.text(length);
    weights.characters = charactersOf(takeLine(text), reader);
    weights.lexicon = Lexicon(wordsOf(takeLine(text)));
    weights.kinds = wordsOf(takeLine(text));
    weights.amounts = numbersOf(takeLine(text), reader);
    weights.minutes = numbersOf(takeLine(text), reader);
    weights.cutWords = Lexicon(wordsOf(takeLine(text)));

    weights.characterRows = reader.matrix(weights.characters.size() + 2, characterWidth);
    weights.filters = reader.layer(neighbours * characterWidth, filterCount);
    weights.valueRows = reader.matrix(ValueClassCount, valueWidth);
    weights.lexiconRows = reader.matrix(weights.lexicon.size() + 1, lexiconWidth);
    weights.token = reader.layer(inputWidth, width);
    for (std::size_t i = 0; i < distances.size(); ++i)
        weights.context.push_back(reader.layer(neighbours * width, width));
    weights.roles = reader.layer(width, roleCount);
    weights.attention = reader.layer(width, headCount);
    weights.kind = reader.layer(width, weights.kinds.size());
    weights.amount = reader.layer(width, weights.amounts.size());
    weights.month = reader.layer(width, monthCount);
    weights.day = reader.layer(width, dayCount);
    weights.hour = reader.layer(width, hourCount);
    weights.minute = reader.layer(width, weights.minutes.size());
    weights.shift = reader.layer(width, shiftCount);
    if (reader.failed() || !reader.atEnd())
        return reader.error();
    if (weights.kinds.empty() || weights.amounts.empty() || weights.minutes.empty())
        return Error{"its vocabulary is empty"};
    return weights;
}

} // namespace quillo::classifier
