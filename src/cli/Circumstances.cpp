#include "cli/Circumstances.h"

#include "base/Clock.h"
#include "cli/When.h"
#include "unicode/SystemPlace.h"

namespace quillo::cli {

Result<Circumstances> circumstancesOf(const Arguments& arguments, const std::string& locale, Places& places) {
    const std::string givenZone = arguments.value("time-zone").value_or("");
    const std::string givenLocale = arguments.value("locale").value_or("");
    const std::string zone = givenZone.empty() ? unicode::systemTimeZone() : givenZone;
    const auto place = places.at(zone, givenLocale.empty() ? locale : givenLocale);
    if (!place)
        return place.error();

    const auto when = arguments.value("now");
    if (!when)
        return Circumstances{[] { return SystemClock().now(); }, *place};
    const Result<Instant> now = readWhen(*when, zone);
    if (!now)
        return now.error();
    return Circumstances{[fixed = *now] { return fixed; }, *place};
}

} // namespace quillo::cli
