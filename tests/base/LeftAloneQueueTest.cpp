#include "base/LeftAloneQueue.h"

#include "support/AwaitingExecutor.h"
#include "support/Gate.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

namespace quillo {
namespace {

TEST(LeftAloneQueue, DoesOneAfterAnotherAndTells) {
    support::AwaitingExecutor executor;
    LeftAloneQueue queue("Test", executor);
    std::vector<int> told;
    for (int number = 0; number < 100; ++number)
        queue.run([number] { return number; }, [&](int result) { told.push_back(result); });
    EXPECT_TRUE(executor.runUntil([&] { return told.size() == 100; }));
    for (int number = 0; number < 100; ++number)
        EXPECT_EQ(told[static_cast<std::size_t>(number)], number);
}

TEST(LeftAloneQueue, IsNotWaitedFor) {
    const auto gate = std::make_shared<support::Gate>();
    const auto ended = std::make_shared<support::Gate>();
    gate->close();
    std::optional<support::AwaitingExecutor> executor(std::in_place);
    {
        LeftAloneQueue queue("Test", *executor);
        queue.run(
            [gate, ended] {
                gate->pass();
                ended->pass();
                return 1;
            },
            [](int) { FAIL(); });
        queue.run(
            [] {
                ADD_FAILURE() << "it has not begun";
                return 2;
            },
            [](int) { FAIL(); });
        gate->waitForArrival();
    }
    executor.reset();
    ended->close();
    gate->open();
    ended->waitForArrival();
    ended->open();
}

} // namespace
} // namespace quillo
