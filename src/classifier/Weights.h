/// The file of weights: what training has made of the network.
#pragma once

#include "base/Result.h"
#include "classifier/Lexicon.h"

#include <cstddef>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace quillo::classifier {

/// Numbers in rows; a row's numbers stand together.
struct Matrix {
    std::size_t rows = 0;
    std::size_t columns = 0;
    std::vector<float> numbers;

    const float* row(std::size_t i) const { return numbers.data() + i * columns; }
};

/// A layer: output = bias + input x weights, a row an input.
struct Layer {
    Matrix weights;
    std::vector<float> bias;
};

/// What the file holds, read and checked. The file is little-endian:
///
/// - 8 bytes "QLLOWGT1", 8 bytes FNV-1a of everything behind them, taken in words of 64 bits, the last one of
///   what is left;
/// - 4 bytes length of a UTF-8 text, and that text: a line each for the characters that the network tells
///   apart, its lexicon, its kinds, its amounts, its minutes and the words that may be cut from a title,
///   separated by blanks;
/// - the matrices, in the order below: 4 bytes rows, 4 bytes columns, the numbers as IEEE 754 binary16. A
///   layer's bias is a matrix of one row behind its weights; a convolution's weights are the rows of its
///   left, middle and right neighbour, one below the other.
struct Weights {
    /// An error names what is wrong with the bytes.
    static Result<Weights> read(std::span<const unsigned char> bytes);

    std::unordered_map<char32_t, std::size_t> characters; ///< to their row; 0 is none, 1 any other
    Lexicon lexicon;
    std::vector<std::string> kinds;
    std::vector<int> amounts;
    std::vector<int> minutes;
    Lexicon cutWords; ///< other words are kept in the title, whatever the network says

    Matrix characterRows;
    Layer filters; ///< a convolution
    Matrix valueRows;
    Matrix lexiconRows;
    Layer token;
    std::vector<Layer> context; ///< convolutions
    Layer roles;
    Layer attention; ///< an output a head
    Layer kind;
    Layer amount;
    Layer month;
    Layer day;
    Layer hour;
    Layer minute;
    Layer shift;
};

} // namespace quillo::classifier
