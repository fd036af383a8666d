// Any bytes as each of the values that the statistics store: reading them never crashes, and what is read
// comes back equal when it is written and read again.
#include "model/Award.h"
#include "model/SpeedRecord.h"
#include "stats/DailyCounts.h"
#include "stats/LocalDay.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

void check(bool good) {
    if (!good)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (const auto record = quillo::decodeSpeedRecord(bytes)) {
        const auto again = quillo::encodeSpeedRecord(*record);
        check(again && quillo::decodeSpeedRecord(*again) == record);
    }
    if (const auto awards = quillo::decodeAwards(bytes))
        check(quillo::decodeAwards(quillo::encodeAwards(*awards)) == awards);
    if (const auto counts = quillo::decodeDailyCounts(bytes)) {
        const auto again = quillo::encodeDailyCounts(*counts);
        check(again && quillo::decodeDailyCounts(*again) == counts);
        for (const auto& [key, count] : *counts) {
            if (const auto day = quillo::parseDayKey(key))
                check(quillo::dayKey(*day) == key);
        }
    }
    return 0;
}
