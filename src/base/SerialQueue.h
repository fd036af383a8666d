/// A thread of its own that runs tasks one after another, behind the main thread's back.
#pragma once

#include "base/Executor.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace quillo {

/// First in, first out. The thread starts with the first task and runs at lowered priority. Destruction
/// drains the queue: what was posted before is done before the destructor returns, so quitting right after a
/// change loses nothing.
///
/// Only copies may cross to a queue, never references to objects of the main thread.
class SerialQueue : public Executor {
public:
    /// Names a kind of task of which only the last one matters; 0 names none.
    using ReplaceableKind = std::uint32_t;

    /// `label` names the thread for debuggers (its last 15 bytes, which is what the kernel keeps).
    explicit SerialQueue(std::string label);
    ~SerialQueue() override;

    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    void post(Work task) override;

    /// Like post, but where the task at the queue's end still waits and is of the same `kind`, takes its
    /// place. The replaced task is never run; it is destroyed on the queue's thread, with whatever it
    /// captured.
    void postReplacing(ReplaceableKind kind, Work task);

    /// Returns when everything posted before the call is done. Never call it from the queue's own thread.
    void drain();

private:
    struct Entry {
        Work task;
        ReplaceableKind kind = 0;
    };

    void enqueue(Entry entry);
    void run();

    const std::string label_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::condition_variable idle_;
    std::deque<Entry> waiting_;
    std::vector<Work> replaced_;
    bool stopping_ = false;
    std::thread thread_;
};

} // namespace quillo
