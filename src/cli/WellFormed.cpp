#include "cli/WellFormed.h"

#include "unicode/Text.h"

#include <charconv>
#include <optional>
#include <string_view>

namespace quillo::cli {

namespace {

constexpr std::size_t escapeLength = 6; // \uXXXX

/// The code unit that an escape at that place stands for.
std::optional<unsigned> escapedUnit(std::string_view json, std::size_t at) {
    if (at + escapeLength > json.size() || json[at] != '\\' || json[at + 1] != 'u')
        return std::nullopt;
    unsigned unit = 0;
    const char* end = json.data() + at + escapeLength;
    if (std::from_chars(end - 4, end, unit, 16).ptr != end)
        return std::nullopt;
    return unit;
}

bool isLead(unsigned unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isTrail(unsigned unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

} // namespace

bool makeWellFormed(std::string& utf8) {
    if (unicode::isWellFormed(utf8))
        return false;
    utf8 = unicode::toUtf8(unicode::toUtf16(utf8));
    return true;
}

bool makeWellFormedJson(std::string& json) {
    bool replaced = makeWellFormed(json);
    for (std::size_t at = json.find('\\'); at != std::string::npos; at = json.find('\\', at)) {
        const std::optional<unsigned> unit = escapedUnit(json, at);
        if (!unit) {
            at += 2; // The escaped character may be a backslash itself.
            continue;
        }
        const std::optional<unsigned> next = escapedUnit(json, at + escapeLength);
        if (isLead(*unit) && next && isTrail(*next)) {
            at += 2 * escapeLength;
            continue;
        }
        if (isLead(*unit) || isTrail(*unit)) {
            json.replace(at, escapeLength, "\\uFFFD");
            replaced = true;
        }
        at += escapeLength;
    }
    return replaced;
}

} // namespace quillo::cli
