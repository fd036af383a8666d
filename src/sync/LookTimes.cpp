#include "sync/LookTimes.h"

#include <algorithm>
#include <ctime>

namespace quillo {

namespace {

constexpr std::chrono::seconds firstBackOff{30};
constexpr int mostDoublings = 5;

} // namespace

LookTimes::Moment LookTimes::now() {
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

void LookTimes::hasSucceeded(Moment when) {
    last_ = when;
    notBefore_ = when;
    failures_ = 0;
}

void LookTimes::hasFailed(Moment when, std::chrono::seconds retryAfter) {
    last_ = when;
    notBefore_ = when + std::min<std::chrono::seconds>(retryAfter, longestRest);
    failures_ = std::min(failures_ + 1, mostDoublings + 1);
}

LookTimes::Moment LookTimes::next(bool shown) const {
    if (failures_ > 0)
        return std::max(notBefore_,
                        last_ + std::min<Moment>(firstBackOff * (1 << (failures_ - 1)), whileHidden));
    return last_ + (shown ? Moment(whileShown) : Moment(whileHidden));
}

} // namespace quillo
