#include "base/ManualExecutor.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <vector>

namespace quillo {
namespace {

TEST(ManualExecutor, RunsInOrderWhatWasPostedAndWhatThatPosts) {
    ManualExecutor executor;
    std::vector<int> order;
    executor.post([&] {
        order.push_back(1);
        executor.post([&] { order.push_back(3); });
    });
    executor.post([&] { order.push_back(2); });
    EXPECT_TRUE(order.empty());
    executor.run();
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST(ManualExecutor, WaitsForAnotherThread) {
    ManualExecutor executor;
    bool done = false;
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        executor.post([&] { done = true; });
    });
    executor.wait();
    EXPECT_FALSE(done) << "waiting is not running";
    executor.run();
    EXPECT_TRUE(done);
    other.join();
}

TEST(ManualExecutor, DoesNotWaitForWhatIsThere) {
    ManualExecutor executor;
    executor.post([] {});
    executor.wait();
}

} // namespace
} // namespace quillo
