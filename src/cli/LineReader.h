/// Reads lines of bounded length.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

namespace quillo::cli {

class LineReader {
public:
    static constexpr std::size_t longest = std::size_t{16} << 20;

    explicit LineReader(std::FILE* input) : input_(input) {}

    /// Reads the next line, without its line end, into `line`; false at the end of the input. Bytes beyond
    /// the longest length are read and dropped.
    bool next(std::string& line);

    /// Whether the line read last was longer.
    bool tooLong() const { return tooLong_; }

    /// The number of the line read last, from 1.
    std::size_t number() const { return number_; }

private:
    std::FILE* input_;
    std::size_t number_ = 0;
    bool tooLong_ = false;
};

} // namespace quillo::cli
