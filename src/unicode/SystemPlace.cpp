#include "unicode/SystemPlace.h"

#include "unicode/CivilCalendar.h"
#include "unicode/Text.h"

#include <unicode/ucal.h>
#include <unicode/uenum.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>
#include <vector>

namespace quillo::unicode {

namespace {

constexpr std::size_t longestZoneName = 100;

enum class ZoneKind { Unknown, InDatabase, DistanceFromUtc };

ZoneKind kindOf(std::string_view name) {
    // A name is cut at a zero in some places of ICU and not in others.
    if (name.empty() || name.size() > longestZoneName || name.find('\0') != std::string_view::npos ||
        name == "Etc/Unknown")
        return ZoneKind::Unknown;
    const std::u16string utf16 = toUtf16(name);
    std::array<char16_t, 2 * longestZoneName> canonical;
    UErrorCode status = U_ZERO_ERROR;
    UBool isSystemId = false;
    ucal_getCanonicalTimeZoneID(utf16.data(), static_cast<std::int32_t>(utf16.size()), canonical.data(),
                                canonical.size(), &isSystemId, &status);
    if (U_FAILURE(status))
        return ZoneKind::Unknown;
    return isSystemId ? ZoneKind::InDatabase : ZoneKind::DistanceFromUtc;
}

bool isInDatabase(std::string_view name) {
    return kindOf(name) == ZoneKind::InDatabase;
}

/// "/usr/share/zoneinfo/Asia/Tokyo" is the file of "Asia/Tokyo".
std::string nameOfZoneFile(const std::string& path) {
    constexpr std::string_view folder = "/zoneinfo/";
    const std::size_t at = path.rfind(folder);
    return at == std::string::npos ? path : path.substr(at + folder.size());
}

struct Sample {
    std::time_t time;
    long offset; ///< seconds by which the clock is ahead of UTC
};

/// What the C library's clock shows on two days a month this year.
std::vector<Sample> samplesOfThisYear() {
    const std::time_t now = std::time(nullptr);
    std::tm today{};
    gmtime_r(&now, &today);
    std::vector<Sample> samples;
    for (int half = 0; half < 24; ++half) {
        std::tm day{};
        day.tm_year = today.tm_year;
        day.tm_mon = half / 2;
        day.tm_mday = half % 2 == 0 ? 1 : 15;
        const std::time_t time = timegm(&day);
        std::tm local{};
        localtime_r(&time, &local);
        samples.push_back({time, local.tm_gmtoff});
    }
    return samples;
}

std::string distanceFromUtc(long offset) {
    const long minutes = std::labs(offset) / 60;
    std::array<char, 32> name;
    std::snprintf(name.data(), name.size(), "GMT%c%02ld:%02ld", offset < 0 ? '-' : '+', minutes / 60,
                  minutes % 60);
    return name.data();
}

bool agrees(const std::string& zone, const std::vector<Sample>& samples) {
    const auto calendar = CivilCalendar::create(zone, "en_US");
    return calendar && std::all_of(samples.begin(), samples.end(), [&](const Sample& sample) {
               return calendar->offsetFromUtc(Instant::fromUnixSeconds(static_cast<double>(sample.time))) ==
                      static_cast<double>(sample.offset);
           });
}

std::string zoneLikeThatOfTheCLibrary() {
    const std::vector<Sample> samples = samplesOfThisYear();
    const bool clockNeverChanges = std::all_of(samples.begin(), samples.end(), [&](const Sample& sample) {
        return sample.offset == samples.front().offset;
    });
    if (clockNeverChanges)
        return distanceFromUtc(samples.front().offset);
    UErrorCode status = U_ZERO_ERROR;
    UEnumeration* names =
        ucal_openTimeZoneIDEnumeration(UCAL_ZONE_TYPE_CANONICAL_LOCATION, nullptr, nullptr, &status);
    std::string found;
    std::int32_t length = 0;
    while (const char* name = found.empty() ? uenum_next(names, &length, &status) : nullptr) {
        if (agrees(name, samples))
            found = name;
    }
    uenum_close(names);
    return found.empty() ? distanceFromUtc(samples.front().offset) : found;
}

std::optional<std::string> zoneByName() {
    if (const char* variable = std::getenv("TZ")) {
        std::string name = variable;
        if (name.starts_with(':'))
            name.erase(0, 1);
        if (name.empty())
            return "UTC"; // That is what an empty TZ means; see tzset(3).
        name = nameOfZoneFile(name);
        if (isInDatabase(name))
            return name;
        return std::nullopt;
    }
    std::error_code error;
    const std::string file = nameOfZoneFile(std::filesystem::read_symlink("/etc/localtime", error).string());
    return !error && isInDatabase(file) ? std::optional(file) : std::nullopt;
}

} // namespace

bool isKnownTimeZone(std::string_view name) {
    return kindOf(name) != ZoneKind::Unknown;
}

std::string systemTimeZone() {
    const std::optional<std::string> name = zoneByName();
    return name ? *name : zoneLikeThatOfTheCLibrary();
}

std::string systemLocale() {
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value == nullptr || *value == '\0')
            continue;
        std::string_view name = value;
        name = name.substr(0, std::min(name.find_first_of(".@"), std::size_t{ULOC_FULLNAME_CAPACITY - 1}));
        const std::string locale(name);
        const bool namesALanguage = *uloc_getISO3Language(locale.c_str()) != '\0';
        return namesALanguage ? locale : "en_US";
    }
    return "en_US";
}

} // namespace quillo::unicode
