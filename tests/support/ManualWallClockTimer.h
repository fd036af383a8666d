/// In-memory twin of the wall-clock timer port.
#pragma once

#include "ports/WallClockTimer.h"
#include "support/FixedClock.h"

#include <optional>

namespace quillo::support {

/// Fires when it is told to look at its clock.
class ManualWallClockTimer : public WallClockTimer {
public:
    explicit ManualWallClockTimer(const FixedClock& clock) : clock_(clock) {}

    void arm(Instant at) override {
        armed_ = at;
        ++armings;
    }
    void disarm() override { armed_.reset(); }

    std::optional<Instant> armed() const { return armed_; }

    /// Fires if the armed instant has come, and again as long as what is armed meanwhile has come as well.
    void look() {
        while (armed_ && *armed_ <= clock_.now()) {
            armed_.reset();
            fired.emit();
        }
    }

    /// What happens when the clock was set while the timer was armed.
    void tellOfClockChange() {
        if (!armed_)
            return;
        armed_.reset();
        clockChanged.emit();
    }

    int armings = 0;

private:
    const FixedClock& clock_;
    std::optional<Instant> armed_;
};

} // namespace quillo::support
