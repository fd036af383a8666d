#include "ports/Data.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace quillo {
namespace {

Data inPieces(const std::vector<std::string>& texts) {
    const auto owner = std::make_shared<const std::vector<std::string>>(texts);
    return Data(owner, Data::Pieces(owner->begin(), owner->end()));
}

TEST(Data, OfOneTextIsOnePiece) {
    const Data data("task");
    EXPECT_EQ(data.size(), 4U);
    EXPECT_EQ(data.bytes(), "task");
    EXPECT_EQ(data.pieces(), Data::Pieces{"task"});
    EXPECT_EQ(data.pieces().front().data(), data.bytes().data());
}

TEST(Data, PutsItsPiecesTogetherInOrder) {
    const Data data = inPieces({"[", "", "one", ",", std::string("\0two", 4), "]"});
    EXPECT_EQ(data.size(), 10U);
    EXPECT_EQ(data.bytes(), std::string("[one,\0two]", 10));
    EXPECT_EQ(data.bytes().data(), data.bytes().data()) << "once only";
    EXPECT_EQ(data.pieces().size(), 6U);
}

TEST(Data, IsEqualWhereverItsBytesLie) {
    EXPECT_EQ(inPieces({"ab", "c"}), inPieces({"a", "bc"}));
    EXPECT_EQ(inPieces({"ab", "c"}), Data("abc"));
    EXPECT_EQ(inPieces({}), Data());
    EXPECT_FALSE(inPieces({"ab", "c"}) == Data("abd"));
    EXPECT_FALSE(inPieces({"ab"}) == Data("abc"));
}

TEST(Data, KeepsTheOwnerOfItsPiecesAlive) {
    auto owner = std::make_shared<const std::string>("kept");
    const std::weak_ptr<const std::string> watched = owner;
    std::vector<Data> copies{Data(owner, {*owner})};
    owner.reset();
    copies.push_back(copies.front());
    copies.erase(copies.begin());
    EXPECT_EQ(copies.front().bytes(), "kept");
    copies.clear();
    EXPECT_TRUE(watched.expired());
}

TEST(Data, IsPutTogetherOnceBySeveralThreads) {
    const Data data = inPieces({std::string(100'000, 'a'), std::string(100'000, 'b')});
    std::vector<const char*> places(4);
    std::vector<std::thread> threads;
    for (const char*& place : places)
        threads.emplace_back([&data, &place] { place = data.bytes().data(); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(places, std::vector<const char*>(4, data.bytes().data()));
}

} // namespace
} // namespace quillo
