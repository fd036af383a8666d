/// The one place that writes dates for people.
#pragma once

#include "base/Instant.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace quillo::unicode {

/// Writes instants in the user's locale, calendar and time zone. Belongs to one thread. What it needs is made
/// on first use and kept: making a formatter costs a hundred times what using it does.
class DateFormat {
public:
    /// `zone` and `locale` as CivilCalendar takes them.
    DateFormat(std::string zone, std::string locale);
    ~DateFormat();
    DateFormat(DateFormat&&) noexcept;
    DateFormat& operator=(DateFormat&&) noexcept;

    /// By a date pattern in ICU's syntax, for example "EEE MMM d, yyyy HH:mm". UTF-8.
    std::string byPattern(Instant instant, std::u16string_view pattern) const;

    /// Medium date and short time, joined as the locale says "date at time": "Mar 5, 2026 at 3:00 PM". Narrow
    /// no-break spaces are plain blanks in English, where keyboards and searches know no other. UTF-8.
    std::string dateAndTime(Instant instant) const;

    /// The time in the locale's short style, without date: "3:00 PM", with plain blanks in English as above.
    /// UTF-8.
    std::string shortTime(Instant instant) const;

private:
    struct Formatter;
    std::string format(const Formatter& formatter, Instant instant) const;
    Formatter open(std::u16string_view pattern) const;

    std::string zone_;
    std::string locale_;
    mutable std::map<std::u16string, Formatter, std::less<>> byPattern_;
    mutable std::unique_ptr<Formatter> dateAndTime_;
    mutable std::unique_ptr<Formatter> shortTime_;
};

} // namespace quillo::unicode
