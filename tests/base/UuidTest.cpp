#include "base/Uuid.h"

#include <gtest/gtest.h>

#include <set>
#include <unordered_set>

namespace quillo {
namespace {

TEST(Uuid, WritesTheCanonicalFormInUpperCase) {
    const auto uuid = Uuid::parse("6f9619ff-8b86-d011-b42d-00cf4fc964ff");
    ASSERT_TRUE(uuid);
    EXPECT_EQ(uuid->toString(), "6F9619FF-8B86-D011-B42D-00CF4FC964FF");
    EXPECT_EQ(Uuid::parse(uuid->toString()), uuid);
}

TEST(Uuid, RefusesWhatIsNotCanonical) {
    for (const char* text : {"", "6F9619FF-8B86-D011-B42D-00CF4FC964F",
                             "6F9619FF-8B86-D011-B42D-00CF4FC964FF0", "6F9619FF8B86D011B42D00CF4FC964FF",
                             "{6F9619FF-8B86-D011-B42D-00CF4FC964FF}", "6F9619FF-8B86-D011-B42D-00CF4FC964FG",
                             "6F9619FF+8B86-D011-B42D-00CF4FC964FF", "6F9619F-F8B86-D011-B42D-00CF4FC964FF"})
        EXPECT_FALSE(Uuid::parse(text)) << text;
}

TEST(Uuid, RandomOnesAreVersion4AndDiffer) {
    std::set<Uuid> seen;
    for (int i = 0; i < 1000; ++i) {
        const Uuid uuid = Uuid::random();
        EXPECT_EQ(uuid.toString()[14], '4');
        EXPECT_NE(std::string("89AB").find(uuid.toString()[19]), std::string::npos);
        EXPECT_TRUE(seen.insert(uuid).second);
    }
}

TEST(Uuid, HandMadeOnesSpreadOverHashes) {
    std::unordered_set<std::size_t> hashes;
    for (std::uint8_t i = 0; i < 255; ++i) {
        Uuid uuid;
        uuid.bytes[15] = i;
        hashes.insert(std::hash<Uuid>()(uuid));
    }
    EXPECT_EQ(hashes.size(), 255u);
}

} // namespace
} // namespace quillo
