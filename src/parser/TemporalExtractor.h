/// The rules: finds the day and the time that a text speaks of, and what is left as its title.
#pragma once

#include "base/Instant.h"
#include "parser/Trace.h"
#include "parser/Vocabulary.h"
#include "unicode/CivilCalendar.h"
#include "unicode/DateFormat.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillo {

/// Belongs to the main thread. Keeps nothing from one text to the next.
class TemporalExtractor {
public:
    /// What the rules made of a text.
    struct Result {
        std::optional<Instant> date; ///< absent where no rule matched
        std::string cleanedTitle;    ///< the text without the phrases that matched; may be empty
        std::string debug;           ///< the date as "EEE MMM d, yyyy HH:mm", or "no date"
    };

    TemporalExtractor(const unicode::CivilCalendar& calendar, const unicode::DateFormat& format)
        : calendar_(calendar), format_(format) {}

    /// Understands `text` as typed at `now`. Notes in `trace`, if given, which rules contributed.
    Result extract(std::u16string_view text, Instant now, Trace* trace = nullptr) const;

    /// The same for a text whose lower-cased form has been looked at already.
    Result extract(std::u16string_view text, const Sightings& sightings, Instant now, Trace* trace) const;

private:
    const unicode::CivilCalendar& calendar_;
    const unicode::DateFormat& format_;
};

} // namespace quillo
