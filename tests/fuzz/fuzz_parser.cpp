/// Any text can be understood, and screening it before the patterns run changes nothing.
#include "parser/ParserService.h"
#include "parser/TemporalHint.h"

#include <cstdint>
#include <cstdlib>

namespace {

using namespace quillo;

struct Everything {
    unicode::CivilCalendar calendar = *unicode::CivilCalendar::create("America/New_York", "en_US");
    unicode::DateFormat format{"America/New_York", "en_US"};
    ParserService parser{calendar, format};
    TemporalExtractor extractor{calendar, format};
    Sightings letAllRun{Words::first(vocabulary.size()), true};
};

void require(bool holds) {
    if (!holds)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Everything everything;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    // Two hours before the clock goes forward.
    const Instant now = Instant::fromUnixSeconds(1741496400.5);

    const Parse parse = everything.parser.parse(text, now);
    require(unicode::isWellFormed(parse.task.title));
    require(parse.task.dueDate.has_value() == (parse.path == ParsePath::Rules));
    require(parse.hint == (parse.path != ParsePath::None));
    if (parse.task.dueDate) {
        require(*parse.task.dueDate < unicode::CivilCalendar::latest + 86400);
        require(!parse.task.title.empty());
    }

    const std::u16string utf16 = unicode::toUtf16(text);
    const auto screened = everything.extractor.extract(utf16, now);
    const auto plain = everything.extractor.extract(utf16, everything.letAllRun, now, nullptr);
    require(screened.date == plain.date && screened.cleanedTitle == plain.cleanedTitle);
    return 0;
}
