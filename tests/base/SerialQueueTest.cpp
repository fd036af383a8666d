#include "base/SerialQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <thread>
#include <vector>

namespace quillo {
namespace {

/// Keeps a queue busy until it is let go.
class Gate {
public:
    explicit Gate(SerialQueue& queue) {
        queue.post([this] {
            entered_.set_value();
            open_.get_future().wait();
        });
        entered_.get_future().wait();
    }
    void open() { open_.set_value(); }

private:
    std::promise<void> entered_;
    std::promise<void> open_;
};

TEST(SerialQueue, RunsTasksInOrderOnOneOtherThread) {
    SerialQueue queue("Quillo.test");
    std::vector<int> order;
    std::vector<std::thread::id> threads;
    for (int i = 0; i < 100; ++i) {
        queue.post([&, i] {
            order.push_back(i);
            threads.push_back(std::this_thread::get_id());
        });
    }
    queue.drain();
    ASSERT_EQ(order.size(), 100u);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
        EXPECT_EQ(threads[static_cast<std::size_t>(i)], threads[0]);
    }
    EXPECT_NE(threads[0], std::this_thread::get_id());
}

TEST(SerialQueue, DestructionDoesWhatIsWaiting) {
    int done = 0;
    {
        SerialQueue queue("Quillo.test");
        for (int i = 0; i < 1000; ++i)
            queue.post([&] { ++done; });
    }
    EXPECT_EQ(done, 1000);
}

TEST(SerialQueue, DrainOfAQueueWithoutThreadReturnsAtOnce) {
    SerialQueue queue("Quillo.test");
    queue.drain();
}

TEST(SerialQueue, ReplacesTheLastWaitingTaskOfTheSameKind) {
    SerialQueue queue("Quillo.test");
    Gate gate(queue);
    std::vector<int> ran;
    queue.postReplacing(1, [&] { ran.push_back(1); });
    queue.postReplacing(1, [&] { ran.push_back(2); });
    queue.postReplacing(1, [&] { ran.push_back(3); });
    gate.open();
    queue.drain();
    EXPECT_EQ(ran, std::vector<int>{3});
}

TEST(SerialQueue, ReplacesNothingAcrossAnotherKindOrAnotherTask) {
    SerialQueue queue("Quillo.test");
    Gate gate(queue);
    std::vector<int> ran;
    queue.postReplacing(1, [&] { ran.push_back(1); });
    queue.postReplacing(2, [&] { ran.push_back(2); });
    queue.postReplacing(1, [&] { ran.push_back(3); });
    queue.post([&] { ran.push_back(4); });
    queue.postReplacing(1, [&] { ran.push_back(5); });
    gate.open();
    queue.drain();
    EXPECT_EQ(ran, (std::vector<int>{1, 2, 3, 4, 5}));
}

TEST(SerialQueue, DestroysAReplacedTaskOnItsOwnThread) {
    SerialQueue queue("Quillo.test");
    std::atomic<std::thread::id> destroyedOn{};
    {
        Gate gate(queue);
        std::shared_ptr<int> held(new int, [&](int* number) {
            destroyedOn = std::this_thread::get_id();
            delete number;
        });
        queue.postReplacing(1, [held = std::move(held)] {});
        queue.postReplacing(1, [] {});
        EXPECT_EQ(destroyedOn.load(), std::thread::id());
        gate.open();
        queue.drain();
    }
    EXPECT_NE(destroyedOn.load(), std::thread::id());
    EXPECT_NE(destroyedOn.load(), std::this_thread::get_id());
}

TEST(SerialQueue, DrainWaitsForWhatWasPostedByOtherThreads) {
    SerialQueue queue("Quillo.test");
    std::atomic<int> done = 0;
    std::vector<std::thread> posters;
    for (int thread = 0; thread < 4; ++thread) {
        posters.emplace_back([&] {
            for (int i = 0; i < 500; ++i)
                queue.post([&] { ++done; });
        });
    }
    for (std::thread& poster : posters)
        poster.join();
    queue.drain();
    EXPECT_EQ(done.load(), 2000);
}

} // namespace
} // namespace quillo
