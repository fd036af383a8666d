/// Where a user is, and in which language.
#pragma once

#include "base/Result.h"
#include "parser/ParserService.h"
#include "unicode/CivilCalendar.h"
#include "unicode/DateFormat.h"

#include <list>
#include <memory>
#include <string>
#include <string_view>

namespace quillo {

/// A calendar, and what is built on it. Belongs to one thread.
class Place {
public:
    /// Names as CivilCalendar takes them; an unknown zone is an error.
    static Result<std::shared_ptr<const Place>> create(std::string_view zone, std::string_view locale);

    const unicode::CivilCalendar& calendar() const { return calendar_; }
    const unicode::DateFormat& format() const { return format_; }
    const ParserService& parser() const { return parser_; }

private:
    explicit Place(unicode::CivilCalendar calendar);

    unicode::CivilCalendar calendar_;
    unicode::DateFormat format_;
    ParserService parser_;
};

/// The places used last. Making one costs more than understanding a text in it.
class Places {
public:
    Result<std::shared_ptr<const Place>> at(const std::string& zone, const std::string& locale);

private:
    static constexpr std::size_t kept = 16;
    std::list<std::shared_ptr<const Place>> recent_;
};

} // namespace quillo
