#include "modelservers/HttpModelServers.h"

#include "modelservers/ServerProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace quillo {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

TEST(HttpModelServers, NameTheirModelsAllAtOnce) {
    const support::ServerProcess server;
    const auto before = std::chrono::steady_clock::now();
    const auto names = HttpModelServers().modelNames(
        {server.address("slow"), server.address("good"), server.address("slow"), server.address("broken")},
        500ms);
    EXPECT_LT(std::chrono::steady_clock::now() - before, 5s);
    ASSERT_EQ(names.size(), 4U);
    EXPECT_EQ(names[0].error().message, "it does not answer in time");
    ASSERT_TRUE(names[1]) << names[1].error().message;
    EXPECT_THAT(*names[1], ElementsAre("first", "second"));
    EXPECT_EQ(names[2].error().message, "it does not answer in time");
    EXPECT_EQ(names[3].error().message, "it answers with the HTTP status 500");
}

} // namespace
} // namespace quillo
