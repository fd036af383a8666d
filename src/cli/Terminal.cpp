#include "cli/Terminal.h"

#include "unicode/Text.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace quillo::cli {

namespace {

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

bool isControl(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

/// Embeddings, overrides, isolates and marks: U+200E, U+200F, U+202A ... U+202E, U+2066 ... U+2069.
bool isDirectionSwitch(char16_t unit) {
    return unit == 0x200E || unit == 0x200F || (unit >= 0x202A && unit <= 0x202E) ||
           (unit >= 0x2066 && unit <= 0x2069);
}

} // namespace

Terminal Terminal::ofStandardOutput() {
    Terminal terminal;
    if (!isatty(STDOUT_FILENO))
        return terminal;
    const char* kind = std::getenv("TERM");
    // NO_COLOR: see https://no-color.org.
    terminal.colour = !isSet("NO_COLOR") && kind != nullptr && std::string_view(kind) != "dumb";
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0)
        terminal.columns = size.ws_col;
    return terminal;
}

std::string Terminal::styled(std::string_view text, Style style) const {
    if (!colour || style == Style::Plain)
        return std::string(text);
    return std::string(style == Style::Red ? "\033[31m" : "\033[2m").append(text).append("\033[0m");
}

std::string onOneLine(std::string_view utf8) {
    std::u16string line;
    for (const char16_t unit : unicode::toUtf16(utf8)) {
        if (isDirectionSwitch(unit))
            continue;
        line += unicode::isWhiteSpace(unit) ? u' ' : isControl(unit) ? u'\uFFFD' : unit;
    }
    return unicode::toUtf8(line);
}

std::string fitted(std::string_view utf8, int columns) {
    if (unicode::displayWidth(utf8) <= columns)
        return std::string(utf8);
    return std::string(unicode::fitToWidth(utf8, columns - 1)) + "…";
}

void printError(std::string_view line) {
    // One write a line: lines of several threads must not run into one another.
    const std::string whole = "quillo: " + onOneLine(line) + "\n";
    std::fwrite(whole.data(), 1, whole.size(), stderr);
}

} // namespace quillo::cli
