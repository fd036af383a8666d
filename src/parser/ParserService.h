/// Turns one line of typed text into a title and a due date.
#pragma once

#include "base/Instant.h"
#include "parser/TemporalExtractor.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillo {

/// A task as typed: what to call it and when it is due.
struct ParsedTask {
    std::string title;              ///< UTF-8
    std::optional<Instant> dueDate; ///< absent where no date was found
    std::optional<std::string>
        interpretation; ///< how the date was found; absent where the text was not analysed

    friend bool operator==(const ParsedTask&, const ParsedTask&) = default;
};

/// Who found the date.
enum class ParsePath {
    None,  ///< nobody looked: the text is empty or holds no hint of a time
    Rules, ///< the rules
    Miss,  ///< a hint, but nobody could make a date of it
};

/// A parsed task, and how it came about.
struct Parse {
    ParsedTask task;
    bool hint = false; ///< the text holds a hint of a time
    ParsePath path = ParsePath::None;
};

/// Belongs to the main thread. Calls share nothing but compiled patterns.
class ParserService {
public:
    /// Both must outlive the service; they say where the user lives.
    ParserService(const unicode::CivilCalendar& calendar, const unicode::DateFormat& format)
        : extractor_(calendar, format) {}

    /// Understands `text` (UTF-8; malformed sequences read as U+FFFD) as typed at `now`. Never fails.
    Parse parse(std::string_view text, Instant now, Trace* trace = nullptr) const;

private:
    TemporalExtractor extractor_;
};

} // namespace quillo
