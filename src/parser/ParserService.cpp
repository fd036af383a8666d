#include "parser/ParserService.h"

#include "parser/TemporalHint.h"
#include "unicode/Text.h"

namespace quillo {

Parse ParserService::parse(std::string_view text, Instant now, Trace* trace) const {
    const std::u16string utf16 = unicode::toUtf16(text);
    const std::u16string_view trimmed = unicode::trim(utf16);
    const std::u16string lowered = unicode::lower(trimmed);
    const Sightings sightings = look(lowered);
    if (trimmed.empty() || !hasTemporalHint(lowered, sightings))
        return {{unicode::toUtf8(trimmed), {}, {}}, false, ParsePath::None};

    TemporalExtractor::Result found = extractor_.extract(trimmed, sightings, now, trace);
    if (found.date) {
        // A text that is nothing but a date is its own title.
        std::string title =
            found.cleanedTitle.empty() ? unicode::toUtf8(trimmed) : std::move(found.cleanedTitle);
        return {{std::move(title), found.date, std::move(found.debug)}, true, ParsePath::Rules};
    }
    return {{unicode::toUtf8(trimmed), {}, "regex+ai miss"}, true, ParsePath::Miss};
}

} // namespace quillo
