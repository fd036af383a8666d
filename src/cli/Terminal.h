/// How text reaches the person at the terminal.
#pragma once

#include <string>
#include <string_view>

namespace quillo::cli {

enum class Style { Plain, Dim, Red };

/// What standard output leads to.
struct Terminal {
    bool colour = false; ///< colours may be used: a terminal, and the user has not set NO_COLOR
    int columns = 0;     ///< its width; 0 where there is none to keep to

    static Terminal ofStandardOutput();

    /// The text in that style, where colours may be used.
    std::string styled(std::string_view text, Style style) const;
};

/// The text on one line, without anything that could drive a terminal: blanks for white space, U+FFFD for
/// other control characters, and none of the characters that switch the writing direction for what follows.
std::string onOneLine(std::string_view utf8);

/// The text as far as it fits into so many columns, with an ellipsis where something is missing.
std::string fitted(std::string_view utf8, int columns);

/// Prints one line on standard error, after the program's name. Any thread.
void printError(std::string_view line);

} // namespace quillo::cli
