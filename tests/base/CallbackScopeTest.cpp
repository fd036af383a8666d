#include "base/CallbackScope.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quillo {
namespace {

TEST(CallbackScope, PassesCallsOnWhileItLives) {
    std::string heard;
    const CallbackScope scope;
    const std::function<void(std::string, int)> callback = scope.guard(
        [&heard](const std::string& text, int number) { heard += text + std::to_string(number); });
    callback("a", 1);
    callback("b", 2);
    EXPECT_EQ(heard, "a1b2");
}

TEST(CallbackScope, NothingIsCalledAfterIt) {
    int calls = 0;
    std::optional<CallbackScope> scope(std::in_place);
    const std::function<void()> callback = scope->guard([&calls] { ++calls; });
    scope.reset();
    callback();
    EXPECT_EQ(calls, 0);
}

TEST(CallbackScope, MayEndWithinACallback) {
    auto scope = std::make_unique<CallbackScope>();
    int calls = 0;
    const std::function<void()> callback = scope->guard([&] {
        ++calls;
        scope.reset();
    });
    callback();
    callback();
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace quillo
