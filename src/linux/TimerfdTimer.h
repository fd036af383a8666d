/// The kernel's wall-clock timer.
#pragma once

#include "ports/WallClockTimer.h"

#include <QSocketNotifier>
#include <memory>

namespace quillo {

/// A timerfd on CLOCK_REALTIME that the kernel cancels when the clock is set (timerfd_create(2)). Needs an
/// event loop.
class TimerfdTimer final : public WallClockTimer {
public:
    TimerfdTimer();
    ~TimerfdTimer() override;

    void arm(Instant at) override;
    void disarm() override;

private:
    void read();

    int descriptor_;
    std::unique_ptr<QSocketNotifier> readable_;
};

} // namespace quillo
