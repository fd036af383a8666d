#include "sync/FolderCarrier.h"

#include "model/TodoItemJson.h"
#include "support/CapturedLog.h"
#include "support/TemporaryFolder.h"
#include "support/TodoItemBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <future>
#include <string>
#include <thread>
#include <vector>

namespace quillo {
namespace {

namespace fs = std::filesystem;
using support::bytesOf;
using support::namesIn;
using support::writeFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

Device device(std::uint32_t number) {
    return {support::numberedId(number), "machine " + std::to_string(number), "Quillo"};
}

StampedBytes list(const std::string& title, double stamp) {
    const std::vector<TodoItem> items{support::Task(title).id(support::numberedId(99))};
    return {Data(*encodeStoredItems(items)), stamp};
}

/// A device that has nothing else to do.
struct Peer {
    Peer(const fs::path& root, std::uint32_t number, FolderCarrier::SetUp setUp = FolderCarrier::SetUp::Yes)
        : carrier(root, device(number), setUp) {}

    Exchange exchange() { return carrier.exchange(mirror); }
    Exchange exchange(const StampedBytes& list) {
        mirror.put(list);
        return exchange();
    }

    FolderCarrier carrier;
    Mirror mirror;
};

class FolderCarrierTest : public testing::Test {
protected:
    fs::path folder() const { return root_.path() / "quillo" / "v1"; }
    fs::path fileOf(std::uint32_t number) const { return folder() / deviceFileName(device(number).id); }
    void put(std::uint32_t number, const StampedBytes& list) const {
        writeFile(fileOf(number), encodeDeviceFile({device(number), list}).value());
    }

    support::CapturedLog log_;
    support::TemporaryFolder root_;
};

TEST_F(FolderCarrierTest, BringsTheLatestListToEverybody) {
    Peer one(root_.path(), 1);
    Peer two(root_.path(), 2);
    EXPECT_TRUE(one.exchange(list("milk", 10)).outcome);
    const Exchange exchange = two.exchange();
    EXPECT_TRUE(exchange.outcome);
    EXPECT_TRUE(exchange.changed);
    EXPECT_EQ(two.mirror.latest(), list("milk", 10));
    EXPECT_TRUE(two.mirror.hasNews());
    EXPECT_EQ(exchange.devices, (std::vector<FoundDevice>{{device(1), 10}}));
    EXPECT_FALSE(two.exchange().changed);

    two.exchange(list("bread", 20));
    EXPECT_EQ(one.exchange().devices, (std::vector<FoundDevice>{{device(2), 20}, {device(1), 10}}));
    EXPECT_EQ(one.mirror.latest(), list("bread", 20));
    EXPECT_THAT(namesIn(folder()), ElementsAre(deviceFileName(device(1).id), deviceFileName(device(2).id)));
}

TEST_F(FolderCarrierTest, OfEqualStampsTakesItsOwnThenTheLowestDevice) {
    Peer two(root_.path(), 2);
    two.exchange(list("two", 10));
    put(1, list("one", 10));
    put(3, list("three", 10));
    two.exchange();
    EXPECT_EQ(two.mirror.latest(), list("two", 10));
    Peer again(root_.path(), 2);
    again.exchange();
    EXPECT_EQ(again.mirror.latest(), list("two", 10));
    Peer nine(root_.path(), 9);
    nine.exchange();
    EXPECT_EQ(nine.mirror.latest(), list("one", 10));
}

TEST_F(FolderCarrierTest, NeverReplacesItsListByAnOlderOne) {
    Peer one(root_.path(), 1);
    one.exchange(list("later", 20));
    EXPECT_TRUE(one.exchange(list("earlier", 10)).outcome);
    EXPECT_EQ(one.mirror.latest(), list("later", 20));
    one.exchange(list("same moment", 20));
    Peer two(root_.path(), 2);
    two.exchange();
    EXPECT_EQ(two.mirror.latest(), list("same moment", 20));
}

TEST_F(FolderCarrierTest, WritesAgainWhatHasGone) {
    Peer one(root_.path(), 1);
    one.exchange(list("milk", 10));
    fs::remove(fileOf(1));
    EXPECT_TRUE(one.exchange().outcome);
    EXPECT_TRUE(fs::exists(fileOf(1)));
    writeFile(fileOf(1), "{");
    EXPECT_TRUE(one.exchange().outcome);
    EXPECT_EQ(Peer(root_.path(), 2).exchange().devices.size(), 1U);
}

TEST_F(FolderCarrierTest, SendsNothingThatIsHeldBack) {
    Peer one(root_.path(), 1);
    one.mirror.holdBack(true);
    one.exchange(list("milk", 10));
    EXPECT_THAT(namesIn(folder()), IsEmpty());
    one.mirror.holdBack(false);
    one.exchange();
    EXPECT_TRUE(fs::exists(fileOf(1)));
}

TEST_F(FolderCarrierTest, SkipsWhatCannotBeReadUntilItHasChanged) {
    Peer one(root_.path(), 1);
    one.exchange();
    put(3, list("three", 30));
    const std::string whole = encodeDeviceFile({device(2), list("two", 40)}).value();
    writeFile(fileOf(2), whole.substr(0, whole.size() / 2));
    put(4, {Data("[{]"), 50});
    fs::copy_file(fileOf(3), fileOf(5));
    fs::create_directory(fileOf(6));
    EXPECT_EQ(mkfifo(fileOf(7).c_str(), 0600), 0);
    fs::create_symlink("nowhere", fileOf(8));
    writeFile(fileOf(9), "");
    const Exchange exchange = one.exchange();
    EXPECT_TRUE(exchange.outcome);
    EXPECT_EQ(exchange.devices, (std::vector<FoundDevice>{{device(3), 30}}));
    EXPECT_EQ(one.mirror.latest(), list("three", 30));
    EXPECT_EQ(log_.lines().size(), 7U);
    one.exchange();
    one.exchange();
    EXPECT_EQ(log_.lines().size(), 7U) << "said more than once";

    writeFile(fileOf(2), whole);
    one.exchange();
    EXPECT_EQ(one.mirror.latest(), list("two", 40));
}

TEST_F(FolderCarrierTest, SkipsWhatIsTooLarge) {
    Peer one(root_.path(), 1);
    one.exchange();
    writeFile(fileOf(2), "{");
    fs::resize_file(fileOf(2), largestDeviceFile + 1);
    EXPECT_THAT(one.exchange().devices, IsEmpty());
    EXPECT_THAT(log_.lines(), ElementsAre(HasSubstr("too large")));
    const Outcome outcome = one.exchange({Data(std::string(largestDeviceFile, ' ')), 5}).outcome;
    ASSERT_FALSE(outcome);
    EXPECT_THAT(outcome.error().message, HasSubstr("too large"));
}

TEST_F(FolderCarrierTest, LeavesOtherNamesAlone) {
    Peer one(root_.path(), 1);
    one.exchange(list("milk", 10));
    const std::string id = device(1).id.toString();
    const std::string newer = encodeDeviceFile({device(1), list("conflict", 90)}).value();
    for (const std::string& name : {id + ".sync-conflict-20250304-094100-ABCDEFG.json",
                                    id + " (conflicted copy 2025-03-04 094100).json", id + ".json~",
                                    "~" + device(2).id.toString() + ".tmp", std::string("notes.txt")})
        writeFile(folder() / name, newer);
    const auto names = namesIn(folder());
    EXPECT_EQ(one.exchange().devices.size(), 1U);
    EXPECT_EQ(one.mirror.latest(), list("milk", 10));
    EXPECT_EQ(namesIn(folder()), names);
    EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(FolderCarrierTest, NeverWritesOverAFormatThatItDoesNotKnow) {
    Peer one(root_.path(), 1);
    one.exchange();
    const std::string future = R"({"format":2,"treasure":"yes"})";
    writeFile(fileOf(1), future);
    writeFile(fileOf(2), future);
    put(3, list("three", 30));
    const Exchange exchange = one.exchange(list("milk", 40));
    ASSERT_FALSE(exchange.outcome);
    EXPECT_THAT(exchange.outcome.error().message, HasSubstr("newer Quillo"));
    EXPECT_EQ(bytesOf(fileOf(1)), future);
    EXPECT_EQ(exchange.devices, (std::vector<FoundDevice>{{device(3), 30}}));
}

TEST_F(FolderCarrierTest, NeverMakesTheFolderAgain) {
    Peer one(root_.path(), 1);
    one.exchange(list("milk", 10));
    put(2, list("bread", 20));
    one.exchange();
    for (const fs::path& gone : {root_.path() / "quillo", root_.path()}) {
        const fs::path elsewhere = root_.path().string() + "-elsewhere";
        fs::rename(gone, elsewhere);
        const Exchange exchange = one.exchange(list("cheese", 30));
        ASSERT_FALSE(exchange.outcome);
        EXPECT_THAT(exchange.outcome.error().message, HasSubstr("is not there"));
        EXPECT_FALSE(fs::exists(gone));
        EXPECT_EQ(one.mirror.latest(), list("cheese", 30));
        fs::rename(elsewhere, gone);
        EXPECT_TRUE(one.exchange().outcome);
    }
    Peer two(root_.path(), 2, FolderCarrier::SetUp::No);
    two.exchange();
    EXPECT_EQ(two.mirror.latest(), list("cheese", 30));
}

TEST_F(FolderCarrierTest, IsSetUpOnlyWhereTheRootIs) {
    const Outcome outcome = Peer(root_.path() / "missing", 1).exchange().outcome;
    ASSERT_FALSE(outcome);
    EXPECT_THAT(outcome.error().message, HasSubstr("cannot make"));
    EXPECT_FALSE(fs::exists(root_.path() / "missing"));
    EXPECT_FALSE(Peer(root_.path(), 1, FolderCarrier::SetUp::No).exchange().outcome);
}

/// Waiting, in another thread, for a carrier's news.
class Awaited {
public:
    explicit Awaited(Carrier& carrier)
        : wake_(eventfd(0, EFD_CLOEXEC)),
          news_(std::async(std::launch::async, [&carrier, wake = wake_] { carrier.awaitNews(wake); })) {}
    ~Awaited() {
        wakeUp();
        news_.wait();
        close(wake_);
    }

    void wakeUp() const { eventfd_write(wake_, 1); }
    bool come(std::chrono::milliseconds limit = std::chrono::seconds(30)) {
        return news_.wait_for(limit) == std::future_status::ready;
    }

private:
    const int wake_;
    std::future<void> news_;
};

TEST_F(FolderCarrierTest, NoticesWhatComes) {
    Peer one(root_.path(), 1);
    Peer two(root_.path(), 2);
    two.exchange();
    for (double stamp = 10; stamp < 15; ++stamp) {
        one.exchange();
        one.exchange(); // The first may have found what it had not been told yet.
        Awaited awaited(one.carrier);
        EXPECT_FALSE(awaited.come(std::chrono::milliseconds(50)));
        two.exchange(list("milk", stamp));
        EXPECT_TRUE(awaited.come());
    }
    Awaited awaited(one.carrier);
    awaited.wakeUp();
    EXPECT_TRUE(awaited.come());
}

TEST_F(FolderCarrierTest, NoticesThatTheFolderGoesAndComesBack) {
    Peer one(root_.path(), 1);
    EXPECT_TRUE(one.exchange().outcome);
    const fs::path quillo = root_.path() / "quillo";
    {
        Awaited awaited(one.carrier);
        fs::remove_all(quillo);
        EXPECT_TRUE(awaited.come());
    }
    EXPECT_FALSE(one.exchange().outcome);
    EXPECT_FALSE(one.exchange().outcome);
    for (const fs::path& step : {quillo, folder()}) {
        Awaited awaited(one.carrier);
        writeFile(root_.path() / "something else", "");
        fs::create_directory(step);
        EXPECT_TRUE(awaited.come());
        EXPECT_EQ(one.exchange().outcome.ok(), step == folder());
    }
    one.exchange();
    Awaited awaited(one.carrier);
    EXPECT_FALSE(awaited.come(std::chrono::milliseconds(50)));
    put(2, list("milk", 10));
    EXPECT_TRUE(awaited.come());
}

TEST_F(FolderCarrierTest, TakesAwayWhatADeviceHasLeft) {
    Peer one(root_.path(), 1);
    one.exchange(list("bread", 20));
    put(2, list("milk", 10));
    const auto file = one.carrier.fileOf(device(2).id);
    ASSERT_TRUE(file) << file.error().message;
    EXPECT_EQ(*file, (DeviceFile{device(2), list("milk", 10)}));
    EXPECT_FALSE(one.carrier.forget(device(2).id, 9)) << "it is another list by now";
    EXPECT_THAT(namesIn(folder()), ElementsAre(deviceFileName(device(1).id), deviceFileName(device(2).id)));
    EXPECT_TRUE(one.carrier.forget(device(2).id, 10));
    EXPECT_THAT(namesIn(folder()), ElementsAre(deviceFileName(device(1).id)));
    EXPECT_FALSE(one.carrier.forget(device(2).id, 10));
    EXPECT_FALSE(one.carrier.fileOf(device(2).id));
}

TEST_F(FolderCarrierTest, TakesNothingAwayThatItCannotRead) {
    Peer one(root_.path(), 1);
    one.exchange();
    for (const std::string& bytes : {std::string("{"), std::string(R"({"format":2})"),
                                     encodeDeviceFile({device(3), list("milk", 10)}).value()}) {
        writeFile(fileOf(2), bytes);
        EXPECT_FALSE(one.carrier.fileOf(device(2).id)) << bytes;
        EXPECT_FALSE(one.carrier.forget(device(2).id, 10)) << bytes;
        EXPECT_TRUE(fs::exists(fileOf(2)));
    }
}

} // namespace
} // namespace quillo
