#include "linux/updates/BuildNumber.h"

#include <gmock/gmock.h>

namespace quillo {
namespace {

BuildNumber build(std::string_view text) {
    return BuildNumber::parse(text).value();
}

TEST(BuildNumber, ComparesNumberByNumber) {
    EXPECT_LT(build("9"), build("10"));
    EXPECT_LT(build("1.9"), build("1.10"));
    EXPECT_LT(build("1"), build("1.0.1"));
    EXPECT_LT(build("0"), build("0.0.1"));
    EXPECT_GT(build("2"), build("1.99.99"));
    EXPECT_EQ(build("007"), build("7"));
}

TEST(BuildNumber, TakesNoNoticeOfZerosAtTheEnd) {
    EXPECT_EQ(build("1"), build("1.0.0"));
    EXPECT_EQ(build("0"), build("0.0"));
}

TEST(BuildNumber, RefusesWhatIsNone) {
    for (const char* text : {"", ".", "1.", ".1", "1..2", "1a", "-1", "+1", " 1", "1 ", "1,2", "0x1", "١",
                             "1234567890123456789", "1.2.3.4.5.6.7.8.9"})
        EXPECT_EQ(BuildNumber::parse(text), std::nullopt) << text;
}

} // namespace
} // namespace quillo
