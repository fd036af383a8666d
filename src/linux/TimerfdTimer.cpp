#include "linux/TimerfdTimer.h"

#include "base/Log.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

namespace quillo {

namespace {

/// The year 9999, well inside what the kernel takes.
constexpr double latest = 253402300800.0;

/// Rounded up, so that the clock shows the instant or later when the timer fires. The earliest is the first
/// that does not disarm it.
timespec toTimespec(Instant at) {
    const double seconds = std::clamp(at.unixSeconds(), 0.0, latest);
    const double whole = std::floor(seconds);
    const double nanoseconds = std::ceil((seconds - whole) * 1e9);
    timespec time{static_cast<time_t>(whole), static_cast<long>(nanoseconds)};
    if (time.tv_nsec >= 1'000'000'000)
        time = {time.tv_sec + 1, 0};
    if (time.tv_sec == 0 && time.tv_nsec == 0)
        time.tv_nsec = 1;
    return time;
}

} // namespace

TimerfdTimer::TimerfdTimer() : descriptor_(timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)) {
    if (descriptor_ < 0) {
        log(std::string("no reminders: the kernel gives no timer: ") + std::strerror(errno));
        return;
    }
    readable_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    QObject::connect(readable_.get(), &QSocketNotifier::activated, [this] { read(); });
}

TimerfdTimer::~TimerfdTimer() {
    readable_.reset();
    if (descriptor_ >= 0)
        close(descriptor_);
}

void TimerfdTimer::arm(Instant at) {
    itimerspec setting{};
    setting.it_value = toTimespec(at);
    // The clock may have been set since the last look; the timer is armed all the same, and nobody else will
    // tell.
    if (timerfd_settime(descriptor_, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &setting, nullptr) != 0 &&
        errno == ECANCELED)
        QMetaObject::invokeMethod(
            readable_.get(), [this] { clockChanged.emit(); }, Qt::QueuedConnection);
}

void TimerfdTimer::disarm() {
    const itimerspec never{};
    timerfd_settime(descriptor_, 0, &never, nullptr);
}

void TimerfdTimer::read() {
    std::uint64_t expirations = 0;
    if (::read(descriptor_, &expirations, sizeof expirations) == sizeof expirations)
        fired.emit();
    else if (errno == ECANCELED)
        clockChanged.emit();
}

} // namespace quillo
