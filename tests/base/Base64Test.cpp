#include "base/Base64.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>

namespace quillo {
namespace {

TEST(Base64, WritesWhatTheStandardGivesAsExamples) {
    for (const auto& [bytes, text] : {std::pair{"", ""},
                                      {"f", "Zg=="},
                                      {"fo", "Zm8="},
                                      {"foo", "Zm9v"},
                                      {"foob", "Zm9vYg=="},
                                      {"fooba", "Zm9vYmE="},
                                      {"foobar", "Zm9vYmFy"}}) {
        EXPECT_EQ(encodeBase64(bytes), text);
        EXPECT_EQ(decodeBase64(text), bytes);
    }
}

TEST(Base64, ReadsBackAllBytes) {
    std::mt19937 random(1);
    for (std::size_t length = 0; length < 300; ++length) {
        std::string bytes;
        while (bytes.size() < length)
            bytes += static_cast<char>(random());
        EXPECT_EQ(decodeBase64(encodeBase64(bytes)), bytes);
    }
}

TEST(Base64, RefusesWhatItWouldNotWrite) {
    for (const char* text : {"Z", "Zg", "Zg=", "Zg===", "=", "==", "====", "Zm9v=", "Zm9v====", "Zh==",
                             "Zm9=", "Zg==Zg==", "Zm 9v", "Zm9v\n", "Zm-_", "Z\xC3\xA9v=", "A==="})
        EXPECT_FALSE(decodeBase64(text)) << text;
}

} // namespace
} // namespace quillo
