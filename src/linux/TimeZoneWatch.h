/// Notices that the system's time zone changes while the program runs.
#pragma once

#include "base/Signal.h"

#include <QSocketNotifier>
#include <memory>

namespace quillo {

/// Watches /etc for a new `localtime`, which is what changing the zone comes to, whoever does it. A process
/// whose zone is set by TZ is never told.
class TimeZoneWatch {
public:
    TimeZoneWatch();
    ~TimeZoneWatch();

    TimeZoneWatch(const TimeZoneWatch&) = delete;
    TimeZoneWatch& operator=(const TimeZoneWatch&) = delete;

    /// systemTimeZone() may be another now.
    Signal<> changed;

private:
    void read();

    int descriptor_;
    std::unique_ptr<QSocketNotifier> readable_;
};

} // namespace quillo
