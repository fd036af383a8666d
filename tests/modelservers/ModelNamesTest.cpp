#include "modelservers/ModelNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillo {
namespace {

using testing::ElementsAre;

TEST(ModelNames, AreReadInTheirOrder) {
    const auto names = readModelNames(
        R"({"object":"list","data":[{"id":"b:1","object":"model"},{"id":"a","owned_by":"x"}],"models":[]})");
    ASSERT_TRUE(names) << names.error().message;
    EXPECT_THAT(*names, ElementsAre("b:1", "a"));
}

TEST(ModelNames, LeaveOutWhatIsNone) {
    const auto names = readModelNames(R"({"data":[{"id":7},{"id":""},"c",null,{},{"id":"good"}]})");
    ASSERT_TRUE(names);
    EXPECT_THAT(*names, ElementsAre("good"));
}

TEST(ModelNames, AreMissedInWords) {
    for (const char* answer :
         {"", "{]", "[]", "{}", R"({"data":{}})", R"({"data":null})", R"({"error":"no"})"}) {
        const auto names = readModelNames(answer);
        ASSERT_FALSE(names) << answer;
        EXPECT_EQ(names.error().message, "its list of models cannot be read") << answer;
    }
    EXPECT_EQ(readModelNames(R"({"data":[]})").error().message, "it has no model");
}

TEST(ModelNames, TellLlamaServer) {
    EXPECT_TRUE(isOfLlamaServer(R"({"data":[{"id":"m","owned_by":"llamacpp"}]})"));
    for (const char* other : {"", "{}", R"({"data":[]})", R"({"data":[{"id":"m","owned_by":"library"}]})",
                              R"({"data":[{"id":"m","owned_by":7}]})"})
        EXPECT_FALSE(isOfLlamaServer(other)) << other;
}

} // namespace
} // namespace quillo
