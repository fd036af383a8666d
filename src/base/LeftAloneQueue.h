/// Work behind the main thread's back that may take as long as it likes, and that nobody waits for at the
/// end.
#pragma once

#include "base/Executor.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace quillo {

/// First in, first out, on a thread that is there as long as there is work. When this goes, what has not
/// begun is dropped, and what is under way is left to itself and ends with the process at the latest. So work
/// may hold only what it shares, and nothing that may be gone.
class LeftAloneQueue {
public:
    /// What work yields is told on the executor, which outlives this. `label` names the thread for debuggers
    /// (15 bytes at most).
    LeftAloneQueue(std::string label, Executor& mainExecutor);
    ~LeftAloneQueue();

    LeftAloneQueue(const LeftAloneQueue&) = delete;
    LeftAloneQueue& operator=(const LeftAloneQueue&) = delete;

    /// Does `work`, then has the executor hand what it returned to `told`; unless this has gone by the time
    /// that it is done.
    template <class Work, class Told>
    void run(Work work, Told told) {
        enqueue([work = std::move(work), told = std::move(told)]() mutable -> quillo::Work {
            return [result = work(), told = std::move(told)]() mutable { told(std::move(result)); };
        });
    }

private:
    struct State;
    using Job = std::function<Work()>;

    void enqueue(Job job);
    static void runAll(const std::shared_ptr<State>& state);

    const std::shared_ptr<State> state_;
};

} // namespace quillo
