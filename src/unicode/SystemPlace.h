/// Where and in which language the user of this machine lives.
#pragma once

#include <string>
#include <string_view>

namespace quillo::unicode {

/// Whether a time zone of that name is known: one of the tz database, or "GMT+05:30" and the like.
bool isKnownTimeZone(std::string_view name);

/// The name of the zone in which this machine's clock runs: by the environment variable TZ, in all its forms,
/// else by /etc/localtime. A zone that has no name we know gets that of one whose clock shows the same all
/// this year, or of the distance from UTC ("GMT+05:30").
std::string systemTimeZone();

/// The locale in which dates are to be written: environment variables LC_ALL, LC_TIME, LANG, the first that
/// is set; "en_US" where none is, or it names no language that is known ("C", "POSIX").
std::string systemLocale();

} // namespace quillo::unicode
