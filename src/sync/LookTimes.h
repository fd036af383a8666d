/// When to look at a place that does not tell when something happens there.
#pragma once

#include <chrono>

namespace quillo {

/// Every half minute while the list is shown, every quarter of an hour else. Where the place fails, after 30
/// s, then 1, 2, 4, 8 and 15 minutes, and not before the place wants it. Moments are times since the machine
/// was started, the time that it slept included.
class LookTimes {
public:
    using Moment = std::chrono::nanoseconds;

    static constexpr std::chrono::seconds whileShown{30};
    static constexpr std::chrono::minutes whileHidden{15};

    /// However long a place wants to be left alone, it is not left alone for longer.
    static constexpr std::chrono::hours longestRest{1};

    static Moment now();

    void hasSucceeded(Moment when);
    void hasFailed(Moment when, std::chrono::seconds retryAfter);

    Moment next(bool shown) const;

    /// The place is not to be asked before that, whoever wants it.
    Moment notBefore() const { return notBefore_; }

private:
    Moment last_{0};
    Moment notBefore_{0};
    int failures_ = 0; ///< in a row
};

} // namespace quillo
