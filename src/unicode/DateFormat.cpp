#include "unicode/DateFormat.h"

#include "unicode/Text.h"

#include <unicode/udat.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <array>
#include <utility>

namespace quillo::unicode {

struct DateFormat::Formatter {
    struct Close {
        void operator()(void* format) const { udat_close(static_cast<UDateFormat*>(format)); }
    };
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
        dateAndTime_ = std::make_unique<Formatter>(open(dateAtTimePattern()));
    return format(*dateAndTime_, instant);
}

std::u16string DateFormat::dateAtTimePattern() const {
    const auto patternOf = [this](UDateFormatStyle time, UDateFormatStyle date) {
        UErrorCode status = U_ZERO_ERROR;
        const Formatter formatter{std::unique_ptr<void, Formatter::Close>(
            udat_open(time, date, locale_.c_str(), nullptr, 0, nullptr, 0, &status))};
        if (U_FAILURE(status))
            return std::u16string();
        std::array<char16_t, 256> pattern;
        const std::int32_t length = udat_toPattern(static_cast<const UDateFormat*>(formatter.format.get()),
                                                   false, pattern.data(), pattern.size(), &status);
        return U_FAILURE(status) ? std::u16string()
                                 : std::u16string(pattern.data(), static_cast<std::size_t>(length));
    };
    // The words that say "date at time" are part of the long style only. So the long date is taken out of
    // that pattern and the medium one put in.
    std::u16string pattern = patternOf(UDAT_SHORT, UDAT_LONG);
    const std::u16string longDate = patternOf(UDAT_NONE, UDAT_LONG);
    const std::u16string mediumDate = patternOf(UDAT_NONE, UDAT_MEDIUM);
    if (const std::size_t at = pattern.find(longDate); !longDate.empty() && at != std::u16string::npos)
        pattern.replace(at, longDate.size(), mediumDate);
    else
        pattern = patternOf(UDAT_SHORT, UDAT_MEDIUM);

    std::array<char, ULOC_LANG_CAPACITY> language{};
    UErrorCode status = U_ZERO_ERROR;
    uloc_getLanguage(locale_.c_str(), language.data(), language.size(), &status);
    if (std::string_view(language.data()) == "en")
        std::replace(pattern.begin(), pattern.end(), u'\u202F', u' ');
    return pattern;
}

} // namespace quillo::unicode
