#include "classifier/Weights.h"

#include "classifier/EmbeddedClassifier.h"
#include "classifier/EmbeddedWeights.h"
#include "support/CapturedLog.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace quillo::classifier {
namespace {

using Bytes = std::vector<unsigned char>;

Bytes whole() {
    return {embeddedWeights().begin(), embeddedWeights().end()};
}

/// With the sum of the file set right again, so that what was changed is looked at.
Bytes sealed(Bytes bytes) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (std::size_t i = 16; i <= bytes.size(); i += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + i, std::min<std::size_t>(8, bytes.size() - i));
        hash = (hash ^ word) * 0x100000001B3;
    }
    std::memcpy(bytes.data() + 8, &hash, 8);
    return bytes;
}

std::uint32_t vocabularyLength(const Bytes& bytes) {
    std::uint32_t length = 0;
    std::memcpy(&length, bytes.data() + 16, 4);
    return length;
}

TEST(Weights, OfTheProgramAreWhole) {
    const auto weights = Weights::read(embeddedWeights());
    ASSERT_TRUE(weights) << weights.error().message;
    EXPECT_EQ(weights->kinds.front(), "NONE");
    EXPECT_LE(embeddedWeights().size(), 400'000U);
}

TEST(Weights, WithAnyByteChangedAreRefused) {
    const Bytes good = whole();
    for (std::size_t i = 0; i < good.size(); i += 997) {
        Bytes bytes = good;
        bytes[i] ^= 0x10;
        EXPECT_FALSE(Weights::read(bytes)) << i;
    }
}

TEST(Weights, CutOffOrTooLongAreRefused) {
    Bytes bytes = whole();
    bytes.push_back(0);
    EXPECT_FALSE(Weights::read(sealed(bytes)));
    for (const std::size_t size : {std::size_t(0), std::size_t(7), std::size_t(15), std::size_t(19),
                                   std::size_t(30), bytes.size() / 2, bytes.size() - 3}) {
        Bytes cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_FALSE(Weights::read(size >= 16 ? sealed(cut) : cut)) << size;
    }
}

TEST(Weights, OfAnotherNetworkAreRefused) {
    const std::size_t firstMatrix = 20 + vocabularyLength(whole());
    for (const unsigned char rows : {0, 1, 255}) {
        Bytes bytes = whole();
        bytes[firstMatrix] = rows;
        const auto weights = Weights::read(sealed(bytes));
        ASSERT_FALSE(weights);
        EXPECT_EQ(weights.error().message, "a matrix has another size than the network");
    }
}

TEST(Weights, ThatAreNoNumbersAreRefused) {
    Bytes bytes = whole();
    bytes[bytes.size() - 1] = 0x7C; // infinite
    bytes[bytes.size() - 2] = 0;
    const auto weights = Weights::read(sealed(bytes));
    ASSERT_FALSE(weights);
    EXPECT_EQ(weights.error().message, "a number is none");
}

TEST(Weights, WithAnAbsurdVocabularyAreRefused) {
    Bytes bytes = whole();
    std::fill_n(bytes.begin() + 16, 4, 0xFF);
    EXPECT_FALSE(Weights::read(sealed(bytes)));
}

TEST(EmbeddedClassifier, WithoutItsWeightsIsNotAvailableAndSaysWhyOnce) {
    const support::CapturedLog log;
    Bytes bytes = whole();
    bytes[100] ^= 1;
    EmbeddedClassifier model(bytes);
    EXPECT_FALSE(model.isAvailable());
    EXPECT_FALSE(model.isAvailable());
    bool failed = false;
    model.startSession("", {})->respond("tmrw", {},
                                        [&](const Result<GeneratedContent>& answer) { failed = !answer; });
    EXPECT_TRUE(failed);
    EXPECT_THAT(log.lines(),
                testing::ElementsAre("the embedded language model cannot be used: it is damaged"));
}

} // namespace
} // namespace quillo::classifier
