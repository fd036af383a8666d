#include "classifier/Network.h"

#include "classifier/Features.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace quillo::classifier {

namespace {

using Row = std::array<float, width>;

/// Adds value x weights to the sums. Their number is known to the compiler, and that nothing overlaps: so it
/// takes several at once.
template <std::size_t Count>
void addScaled(float value, const float* __restrict weights, float* __restrict sums) {
    for (std::size_t i = 0; i < Count; ++i)
        sums[i] += value * weights[i];
}

/// Adds input x weights, a row an input, to the sums.
template <std::size_t Count>
void accumulate(std::span<const float> input, const float* weights, float* sums) {
    for (const float value : input) {
        if (value != 0) // After a rectification many are.
            addScaled<Count>(value, weights, sums);
        weights += Count;
    }
}

void rectify(std::span<float> values) {
    for (float& value : values)
        value = std::max(value, 0.0F);
}

std::vector<float> outputOf(const Layer& layer, const Row& input) {
    std::vector<float> output = layer.bias;
    for (std::size_t i = 0; i < width; ++i) {
        const float* const weights = layer.weights.row(i);
        for (std::size_t j = 0; j < output.size(); ++j)
            output[j] += input[i] * weights[j];
    }
    return output;
}

/// The strongest answer of each filter anywhere in the word.
std::array<float, filterCount> spelling(const Weights& weights, const std::vector<std::size_t>& characters) {
    std::array<float, filterCount> strongest{};
    for (std::size_t place = 0; place < characters.size(); ++place) {
        std::array<float, filterCount> sums{};
        std::copy(weights.filters.bias.begin(), weights.filters.bias.end(), sums.begin());
        for (std::size_t tap = 0; tap < neighbours; ++tap) {
            const std::size_t neighbour = place + tap; // one further on than it is
            if (neighbour < 1 || neighbour > characters.size())
                continue;
            accumulate<filterCount>({weights.characterRows.row(characters[neighbour - 1]), characterWidth},
                                    weights.filters.weights.row(tap * characterWidth), sums.data());
        }
        for (std::size_t i = 0; i < filterCount; ++i)
            strongest[i] = std::max(strongest[i], sums[i]);
    }
    return strongest;
}

/// The token by itself.
Row alone(const Weights& weights, const Features& features) {
    const std::array<float, filterCount> filters = spelling(weights, features.characters);
    std::array<float, inputWidth> input{};
    auto* end = std::copy(filters.begin(), filters.end(), input.begin());
    end = std::copy_n(weights.valueRows.row(features.value), valueWidth, end);
    end = std::copy_n(weights.lexiconRows.row(features.word), lexiconWidth, end);
    std::copy(features.flags.begin(), features.flags.end(), end);

    Row row{};
    std::copy(weights.token.bias.begin(), weights.token.bias.end(), row.begin());
    accumulate<width>(input, weights.token.weights.row(0), row.data());
    rectify(row);
    return row;
}

/// Every token with its neighbours at that distance. Each row of the weights is fetched once for all tokens:
/// there are more of them than a processor's nearest memory holds.
std::vector<Row> together(const Layer& layer, std::size_t distance, const std::vector<Row>& rows) {
    std::vector<Row> result(rows.size());
    for (Row& sums : result)
        std::copy(layer.bias.begin(), layer.bias.end(), sums.begin());
    for (std::size_t tap = 0; tap < neighbours; ++tap) {
        // Where the neighbour at tap * distance - distance is within the text.
        const std::size_t begin = distance - std::min(distance, tap * distance);
        const std::size_t end = rows.size() + distance - std::min(rows.size() + distance, tap * distance);
        for (std::size_t i = 0; i < width; ++i) {
            const float* const weights = layer.weights.row(tap * width + i);
            for (std::size_t place = begin; place < std::min(end, rows.size()); ++place) {
                const float value = rows[place + tap * distance - distance][i];
                if (value != 0)
                    addScaled<width>(value, weights, result[place].data());
            }
        }
    }
    for (std::size_t place = 0; place < rows.size(); ++place) {
        rectify(result[place]);
        for (std::size_t i = 0; i < width; ++i)
            result[place][i] += rows[place][i];
    }
    return result;
}

/// What all tokens say together, each by the attention that a head pays to it.
Row pooled(const std::vector<Row>& rows, const std::vector<std::vector<float>>& attention, std::size_t head) {
    float highest = attention[0][head];
    for (const std::vector<float>& scores : attention)
        highest = std::max(highest, scores[head]);
    Row sum{};
    float total = 0;
    for (std::size_t place = 0; place < rows.size(); ++place) {
        const float weight = std::exp(attention[place][head] - highest);
        total += weight;
        for (std::size_t i = 0; i < width; ++i)
            sum[i] += weight * rows[place][i];
    }
    for (float& value : sum)
        value /= total;
    return sum;
}

} // namespace

Impression look(const Weights& weights, std::string_view text, const std::vector<Token>& tokens) {
    std::vector<Row> rows;
    rows.reserve(tokens.size());
    for (std::size_t place = 0; place < tokens.size(); ++place)
        rows.push_back(alone(weights, featuresOf(weights, text, tokens, place)));
    for (std::size_t i = 0; i < distances.size(); ++i)
        rows = together(weights.context[i], distances[i], rows);

    Impression impression;
    std::vector<std::vector<float>> attention;
    for (const Row& row : rows) {
        const std::vector<float> scores = outputOf(weights.roles, row);
        std::copy(scores.begin(), scores.end(), impression.roles.emplace_back().begin());
        attention.push_back(outputOf(weights.attention, row));
    }
    impression.kind = outputOf(weights.kind, pooled(rows, attention, 0));
    impression.amount = outputOf(weights.amount, pooled(rows, attention, 1));
    impression.month = outputOf(weights.month, pooled(rows, attention, 2));
    impression.day = outputOf(weights.day, pooled(rows, attention, 3));
    impression.hour = outputOf(weights.hour, pooled(rows, attention, 4));
    impression.minute = outputOf(weights.minute, pooled(rows, attention, 5));
    impression.shift = outputOf(weights.shift, pooled(rows, attention, 6));
    return impression;
}

} // namespace quillo::classifier
