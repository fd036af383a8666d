#include "unicode/DateFormat.h"

#include "unicode/Text.h"

#include <unicode/udat.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <array>
#include <utility>

namespace quillo::unicode {

namespace {

struct Close {
    void operator()(void* format) const { udat_close(static_cast<UDateFormat*>(format)); }
};

/// The pattern that a locale has for these styles; empty where there is none.
std::u16string patternOf(const std::string& locale, UDateFormatStyle time, UDateFormatStyle date) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<void, Close> format(
        udat_open(time, date, locale.c_str(), nullptr, 0, nullptr, 0, &status));
    if (U_FAILURE(status))
        return {};
    std::array<char16_t, 256> pattern;
    const std::int32_t length = udat_toPattern(static_cast<const UDateFormat*>(format.get()), false,
                                               pattern.data(), pattern.size(), &status);
    return U_FAILURE(status) ? std::u16string()
                             : std::u16string(pattern.data(), static_cast<std::size_t>(length));
}

/// In English, with blanks that keyboards and searches know.
std::u16string withPlainBlanks(std::u16string pattern, const std::string& locale) {
    std::array<char, ULOC_LANG_CAPACITY> language{};
    UErrorCode status = U_ZERO_ERROR;
    uloc_getLanguage(locale.c_str(), language.data(), language.size(), &status);
    if (std::string_view(language.data()) == "en")
        std::replace(pattern.begin(), pattern.end(), u'\u202F', u' ');
    return pattern;
}

std::u16string dateAtTimePattern(const std::string& locale) {
    // The words that say "date at time" are part of the long style only. So the long date is taken out of
    // that pattern and the medium one put in.
    std::u16string pattern = patternOf(locale, UDAT_SHORT, UDAT_LONG);
    const std::u16string longDate = patternOf(locale, UDAT_NONE, UDAT_LONG);
    const std::u16string mediumDate = patternOf(locale, UDAT_NONE, UDAT_MEDIUM);
    if (const std::size_t at = pattern.find(longDate); !longDate.empty() && at != std::u16string::npos)
        pattern.replace(at, longDate.size(), mediumDate);
    else
        pattern = patternOf(locale, UDAT_SHORT, UDAT_MEDIUM);
    return withPlainBlanks(std::move(pattern), locale);
}

} // namespace

struct DateFormat::Formatter {
    std::unique_ptr<void, Close> format;
};

DateFormat::DateFormat(std::string zone, std::string locale)
    : zone_(std::move(zone)), locale_(std::move(locale)) {}
DateFormat::~DateFormat() = default;
DateFormat::DateFormat(DateFormat&&) noexcept = default;
DateFormat& DateFormat::operator=(DateFormat&&) noexcept = default;

DateFormat::Formatter DateFormat::open(std::u16string_view pattern) const {
    UErrorCode status = U_ZERO_ERROR;
    const std::u16string zone = toUtf16(zone_);
    Formatter formatter;
    formatter.format.reset(udat_open(UDAT_PATTERN, UDAT_PATTERN, locale_.c_str(), zone.data(),
                                     static_cast<std::int32_t>(zone.size()), pattern.data(),
                                     static_cast<std::int32_t>(pattern.size()), &status));
    return formatter;
}

std::string DateFormat::format(const Formatter& formatter, Instant instant) const {
    if (!formatter.format)
        return {};
    UErrorCode status = U_ZERO_ERROR;
    std::array<char16_t, 256> text;
    const std::int32_t length =
        udat_format(static_cast<const UDateFormat*>(formatter.format.get()), instant.unixSeconds() * 1000,
                    text.data(), text.size(), nullptr, &status);
    if (U_FAILURE(status))
        return {};
    return toUtf8({text.data(), static_cast<std::size_t>(length)});
}

std::string DateFormat::byPattern(Instant instant, std::u16string_view pattern) const {
    auto found = byPattern_.find(pattern);
    if (found == byPattern_.end())
        found = byPattern_.emplace(pattern, open(pattern)).first;
    return format(found->second, instant);
}

std::string DateFormat::dateAndTime(Instant instant) const {
    if (!dateAndTime_)
        dateAndTime_ = std::make_unique<Formatter>(open(dateAtTimePattern(locale_)));
    return format(*dateAndTime_, instant);
}

std::string DateFormat::shortTime(Instant instant) const {
    if (!shortTime_)
        shortTime_ = std::make_unique<Formatter>(
            open(withPlainBlanks(patternOf(locale_, UDAT_SHORT, UDAT_NONE), locale_)));
    return format(*shortTime_, instant);
}

} // namespace quillo::unicode
