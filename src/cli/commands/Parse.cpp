#include "base/Clock.h"
#include "cli/JsonLines.h"
#include "cli/Understanding.h"
#include "cli/Warnings.h"
#include "cli/When.h"
#include "cli/commands/Commands.h"
#include "unicode/SystemPlace.h"

#include <cstdio>

namespace quillo::cli {

ExitCode parse(const Arguments& arguments) {
    const std::string zone = arguments.value("time-zone").value_or("");
    const std::string locale = arguments.value("locale").value_or("");
    const std::string effectiveZone = zone.empty() ? unicode::systemTimeZone() : zone;

    const auto place = Place::create(effectiveZone, locale.empty() ? unicode::systemLocale() : locale);
    if (!place)
        return failed(place.error());
    const auto now = [&]() -> Result<Instant> {
        const auto when = arguments.value("now");
        return when ? readWhen(*when, effectiveZone) : SystemClock().now();
    };
    const Result<Instant> reference = now();
    if (!reference)
        return failed(reference.error());

    if (arguments.has("jsonl")) {
        // Scripts get the same answers everywhere: the user's locale counts only where it is asked for.
        const JsonLinesDefaults defaults{[&] { return *now(); }, effectiveZone,
                                         locale.empty() ? "en_US" : locale};
        showWarningsAtOnce(); // About a line, while it is being looked at; and there may be any number.
        const Result<bool> allRead = parseJsonLines(stdin, stdout, defaults);
        if (!allRead)
            return failed(allRead.error());
        return *allRead ? ExitCode::Done : ExitCode::Failed;
    }

    const std::string text = arguments.text();
    Trace matched;
    const Parse understood = (*place)->parser().parse(text, *reference, &matched);
    const Trace* trace = arguments.has("trace") ? &matched : nullptr;
    if (arguments.has("json"))
        std::printf("{%s}\n", membersOf(understood, text, trace).c_str());
    else
        std::fputs(described(understood, text, trace, **place).c_str(), stdout);
    return ExitCode::Done;
}

} // namespace quillo::cli
