#include "model/HotKeyConfigJson.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

namespace quillo {
namespace {

TEST(HotKeyConfig, IsControlOptionCommandTByDefault) {
    EXPECT_EQ(HotKeyConfig(), (HotKeyConfig{17, 0x1900}));
}

TEST(HotKeyConfig, IsEqualToOneWithTheSameFieldsOnly) {
    EXPECT_NE(HotKeyConfig(), (HotKeyConfig{16, 0x1900}));
    EXPECT_NE(HotKeyConfig(), (HotKeyConfig{17, 0x1800}));
}

TEST(HotKeyConfig, IsWrittenWithTwoKeys) {
    EXPECT_EQ(encodeHotKeyConfig({}), R"({"keyCode":17,"modifiers":6400})");
    EXPECT_EQ(encodeHotKeyConfig({0xFFFFFFFF, 0}), R"({"keyCode":4294967295,"modifiers":0})");
}

TEST(HotKeyConfig, IsReadInAnyOrderWithWhateverElseIsThere) {
    EXPECT_EQ(
        decodeHotKeyConfig("\n{ \"modifiers\" : 768, \"x\" : [{\"y\":null}], \"key\\u0043ode\" : 40 }\n"),
        (HotKeyConfig{40, 0x300}));
    EXPECT_EQ(decodeHotKeyConfig(R"({"keyCode":4294967295,"modifiers":4294967295})"),
              (HotKeyConfig{0xFFFFFFFF, 0xFFFFFFFF}));
}

TEST(HotKeyConfig, IsAbsentWhereAnythingIsWrong) {
    for (const std::string& bytes : std::vector<std::string>{
             "",
             " ",
             "null",
             "17",
             "[]",
             "{}",
             "[17,6400]",
             R"({"keyCode":17})",
             R"({"modifiers":6400})",
             R"({"KeyCode":17,"modifiers":6400})",
             R"({"keyCode":"17","modifiers":6400})",
             R"({"keyCode":17,"modifiers":null})",
             R"({"keyCode":true,"modifiers":6400})",
             R"({"keyCode":-1,"modifiers":6400})",
             R"({"keyCode":17.5,"modifiers":6400})",
             R"({"keyCode":4294967296,"modifiers":6400})",
             R"({"keyCode":17,"modifiers":4294967296})",
             R"({"keyCode":17,"modifiers":18446744073709551616})",
             R"({"keyCode":17,"modifiers":6400)",
             R"({"keyCode":17,"modifiers":6400}})",
             R"({"keyCode":17,"modifiers":6400} x)",
             R"([{"keyCode":17,"modifiers":6400}])",
             "{\"keyCode\":17,\"modifiers\":6400,\"x\":\"\xFF\"}",
         })
        EXPECT_FALSE(decodeHotKeyConfig(bytes)) << bytes;
    const std::string good = encodeHotKeyConfig({});
    EXPECT_TRUE(decodeHotKeyConfig(good + std::string(4000, ' ')));
    EXPECT_FALSE(decodeHotKeyConfig(good + std::string(5000, ' ')));
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_FALSE(decodeHotKeyConfig(std::string_view(good).substr(0, length))) << length;
}

RC_GTEST_PROP(HotKeyConfigProperty, ReadsBack, (std::uint32_t keyCode, std::uint32_t modifiers)) {
    const HotKeyConfig config{keyCode, modifiers};
    RC_ASSERT(decodeHotKeyConfig(encodeHotKeyConfig(config)) == config);
}

} // namespace
} // namespace quillo
