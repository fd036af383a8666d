/// Where a user is, and in which language.
#pragma once

#include "base/Result.h"
#include "parser/ParserService.h"
#include "ports/LanguageModel.h"
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
    /// Names as CivilCalendar takes them; an unknown zone is an error. The parser asks the model, if there is
    /// one, which must outlive the place.
    static Result<std::shared_ptr<const Place>> create(std::string_view zone, std::string_view locale,
                                                       LanguageModel* model = nullptr);

    const unicode::CivilCalendar& calendar() const { return calendar_; }
    const unicode::DateFormat& format() const { return format_; }
    const ParserService& parser() const { return parser_; }

private:
    Place(unicode::CivilCalendar calendar, LanguageModel* model);

    unicode::CivilCalendar calendar_;
    unicode::DateFormat format_;
    ParserService parser_;
};

/// The places used last. Making one costs more than understanding a text in it.
class Places {
public:
    /// Their parsers ask the model, if there is one. It must outlive every place.
    explicit Places(LanguageModel* model = nullptr) : model_(model) {}

    Result<std::shared_ptr<const Place>> at(const std::string& zone, const std::string& locale);

private:
    static constexpr std::size_t kept = 16;
    LanguageModel* model_;
    std::list<std::shared_ptr<const Place>> recent_;
};

} // namespace quillo
