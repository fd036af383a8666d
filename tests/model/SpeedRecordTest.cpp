#include "model/SpeedRecord.h"

#include "support/ArbitraryTodoItem.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <limits>
#include <string>

namespace quillo {
namespace {

constexpr const char* stored = R"({"title":"Call mom","durationSeconds":90.5,"completedAt":762000000.25})";

TEST(SpeedRecord, IsWrittenWithThreeKeys) {
    EXPECT_EQ(encodeSpeedRecord({"Call mom", 90.5, {762000000.25}}), stored);
}

TEST(SpeedRecord, IsEqualToOneWithTheSameFieldsOnly) {
    const SpeedRecord record{"t", 1, {2}};
    EXPECT_EQ(record, (SpeedRecord{"t", 1, {2}}));
    EXPECT_NE(record, (SpeedRecord{"T", 1, {2}}));
    EXPECT_NE(record, (SpeedRecord{"t", 1.5, {2}}));
    EXPECT_NE(record, (SpeedRecord{"t", 1, {2.5}}));
}

TEST(SpeedRecord, IsReadInAnyOrderWithWhateverElseIsThere) {
    const SpeedRecord expected{"Call mom", 90.5, {762000000.25}};
    EXPECT_EQ(decodeSpeedRecord(stored), expected);
    EXPECT_EQ(decodeSpeedRecord("\n { \"completedAt\" : 762000000.25 , \"colour\" : [1, {\"red\": null}],"
                                "\"durationSeconds\" : 90.5, \"title\" : \"\\u0043all mom\" } \n"),
              expected);
    EXPECT_EQ(decodeSpeedRecord(R"({"title":"","durationSeconds":90,"completedAt":-3})"),
              (SpeedRecord{"", 90, {-3}}));
}

TEST(SpeedRecord, IsAbsentWhereAnythingIsWrong) {
    for (const std::string& bytes : std::vector<std::string>{
             "",
             " ",
             "null",
             "[]",
             "{}",
             R"({"durationSeconds":90.5,"completedAt":7})",
             R"({"title":"t","completedAt":7})",
             R"({"title":"t","durationSeconds":90.5})",
             R"({"title":null,"durationSeconds":90.5,"completedAt":7})",
             R"({"title":1,"durationSeconds":90.5,"completedAt":7})",
             R"({"title":"t","durationSeconds":"90.5","completedAt":7})",
             R"({"title":"t","durationSeconds":90.5,"completedAt":true})",
             R"({"title":"t","durationSeconds":90.5,"completedAt":1e999})",
             R"({"title":"t","durationSeconds":NaN,"completedAt":7})",
             R"({"title":"t","durationSeconds":90.5,"completedAt":7)",
             R"({"title":"t","durationSeconds":90.5,"completedAt":7}})",
             R"({"title":"t","durationSeconds":90.5,"completedAt":7} x)",
             R"([{"title":"t","durationSeconds":90.5,"completedAt":7}])",
             "{\"title\":\"\xFF\",\"durationSeconds\":90.5,\"completedAt\":7}",
             R"({"title":"t","durationSeconds":90.5,"completedAt":7,"other":"\x"})",
         })
        EXPECT_FALSE(decodeSpeedRecord(bytes)) << bytes;
    EXPECT_TRUE(decodeSpeedRecord(R"({"title":"t","durationSeconds":90.5,"completedAt":7})"));
}

TEST(SpeedRecord, IsNotReadWhereValuesAreNestedWithoutEnd) {
    const std::string deep = std::string(100'000, '[') + std::string(100'000, ']');
    EXPECT_FALSE(
        decodeSpeedRecord(R"({"title":"t","durationSeconds":1,"completedAt":7,"other":)" + deep + "}"));
}

TEST(SpeedRecord, IsNotWrittenIfItCouldNotBeReadAgain) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(encodeSpeedRecord({"t", infinity, {0}}));
    EXPECT_FALSE(encodeSpeedRecord({"t", std::numeric_limits<double>::quiet_NaN(), {0}}));
    EXPECT_FALSE(encodeSpeedRecord({"t", 0, {-infinity}}));
    EXPECT_FALSE(encodeSpeedRecord({"cut \xE2\x82", 0, {0}}));
}

TEST(SpeedRecord, HasALargestSizeBothWays) {
    const std::size_t others = encodeSpeedRecord({"", 1, {2}})->size();
    const SpeedRecord largest{std::string(largestStoredRecord - others, 't'), 1, {2}};
    const auto bytes = encodeSpeedRecord(largest);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), largestStoredRecord);
    EXPECT_EQ(decodeSpeedRecord(*bytes), largest);
    EXPECT_FALSE(encodeSpeedRecord({largest.title + 't', 1, {2}}));
    EXPECT_FALSE(decodeSpeedRecord(*bytes + ' '));
    EXPECT_FALSE(encodeSpeedRecord({std::string(largestStoredRecord + 1, 't'), 1, {2}}));
}

RC_GTEST_PROP(SpeedRecordProperty, ReadsBackToTheLastBit, (Instant duration, Instant completedAt)) {
    const std::string title = *rc::Arbitrary<TodoItem>::unicodeText();
    const auto bytes = encodeSpeedRecord({title, duration.secondsSince2001, completedAt});
    RC_ASSERT(bytes.has_value());
    const auto record = decodeSpeedRecord(*bytes);
    RC_ASSERT(record.has_value());
    RC_ASSERT(record->title == title);
    RC_ASSERT(std::bit_cast<std::uint64_t>(record->durationSeconds) ==
              std::bit_cast<std::uint64_t>(duration.secondsSince2001));
    RC_ASSERT(std::bit_cast<std::uint64_t>(record->completedAt.secondsSince2001) ==
              std::bit_cast<std::uint64_t>(completedAt.secondsSince2001));
}

} // namespace
} // namespace quillo
