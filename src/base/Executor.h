/// Somewhere work can be handed to, to be run later and in order.
#pragma once

#include <functional>

namespace quillo {

using Work = std::function<void()>;

/// Thread-safe: any thread may post. Tasks run one at a time, in the order they were posted, on the
/// executor's thread.
class Executor {
public:
    virtual ~Executor() = default;
    virtual void post(Work task) = 0;
};

} // namespace quillo
