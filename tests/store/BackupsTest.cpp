#include "store/Backups.h"

#include "support/CapturedLog.h"
#include "support/FixedClock.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <thread>

namespace quillo {
namespace {

using support::bytesOf;
using support::CapturedLog;
using support::FixedClock;
using support::namesIn;
using support::TemporaryFolder;
using support::writeFile;
using Names = std::vector<std::string>;
using std::filesystem::perms;

perms permissionsOf(const std::filesystem::path& path) {
    return std::filesystem::status(path).permissions();
}

class BackupsTest : public testing::Test {
protected:
    std::filesystem::path lists() const { return folder.path() / "backups"; }

    CapturedLog log;
    TemporaryFolder folder;
    FixedClock clock{Instant::fromUnixSeconds(1741081260.25)};
    Backups backups{folder.path(), clock};
};

TEST_F(BackupsTest, KeepsAListUnderItsTime) {
    EXPECT_TRUE(backups.keepList("[1]"));
    EXPECT_EQ(namesIn(lists()), (Names{"20250304T094100.250Z.json"}));
    EXPECT_EQ(bytesOf(lists() / "20250304T094100.250Z.json"), "[1]");
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(BackupsTest, AreForTheUserAlone) {
    EXPECT_TRUE(backups.keepList("[]"));
    EXPECT_TRUE(backups.keepDamaged("key", "x"));
    EXPECT_EQ(permissionsOf(lists()), perms::owner_all);
    EXPECT_EQ(permissionsOf(lists() / "20250304T094100.250Z.json"), perms::owner_read | perms::owner_write);
    EXPECT_EQ(permissionsOf(folder.path() / "damaged-20250304T094100.250Z-key"),
              perms::owner_read | perms::owner_write);
}

TEST_F(BackupsTest, KeepEveryListOfOneMillisecond) {
    for (const char* list : {"[1]", "[2]", "[3]"})
        EXPECT_TRUE(backups.keepList(list));
    EXPECT_EQ(namesIn(lists()),
              (Names{"20250304T094100.250Z.json", "20250304T094100.251Z.json", "20250304T094100.252Z.json"}));
    EXPECT_EQ(bytesOf(lists() / "20250304T094100.252Z.json"), "[3]");
}

TEST_F(BackupsTest, SortByAgeThoughTheClockWentBack) {
    EXPECT_TRUE(backups.keepList("[1]"));
    clock.advance(-86400);
    EXPECT_TRUE(backups.keepList("[2]"));
    EXPECT_EQ(namesIn(lists()), (Names{"20250304T094100.250Z.json", "20250304T094100.251Z.json"}));
}

TEST_F(BackupsTest, KeepTheLastTenLists) {
    for (int number = 1; number <= 13; ++number) {
        clock.advance(1);
        EXPECT_TRUE(backups.keepList("[" + std::to_string(number) + "]"));
    }
    const Names names = namesIn(lists());
    ASSERT_EQ(names.size(), Backups::keptLists);
    EXPECT_EQ(bytesOf(lists() / names.front()), "[4]");
    EXPECT_EQ(bytesOf(lists() / names.back()), "[13]");
}

TEST_F(BackupsTest, LeaveForeignFilesAlone) {
    std::filesystem::create_directory(lists());
    const Names foreign = {"20250304T094100.250Z", "20250304T094100.250Z.txt", "20259904T094100.250Z.json",
                           "notes.json"};
    for (const std::string& name : foreign)
        writeFile(lists() / name, "mine");
    for (int number = 0; number < 20; ++number)
        EXPECT_TRUE(backups.keepList("[]"));
    EXPECT_EQ(namesIn(lists()).size(), Backups::keptLists + foreign.size());
    for (const std::string& name : foreign)
        EXPECT_EQ(bytesOf(lists() / name), "mine");
}

TEST_F(BackupsTest, OverwriteWhatACrashLeftUnfinished) {
    std::filesystem::create_directory(lists());
    writeFile(lists() / ".unfinished-list", "half of a longer list than the next one");
    EXPECT_TRUE(backups.keepList("[]"));
    EXPECT_EQ(namesIn(lists()), (Names{"20250304T094100.250Z.json"}));
    EXPECT_EQ(bytesOf(lists() / "20250304T094100.250Z.json"), "[]");
}

TEST_F(BackupsTest, DoNotFollowALinkInTheWay) {
    std::filesystem::create_directory(lists());
    writeFile(folder.path() / "precious", "mine");
    std::filesystem::create_symlink(folder.path() / "precious", lists() / ".unfinished-list");
    EXPECT_FALSE(backups.keepList("[]"));
    EXPECT_EQ(bytesOf(folder.path() / "precious"), "mine");
    EXPECT_TRUE(backups.keepList("[]")) << "the link is gone";
}

TEST_F(BackupsTest, SayWhenTheyCannotBeWritten) {
    writeFile(lists(), "a file where the folder should be");
    EXPECT_FALSE(backups.keepList("[]"));
    EXPECT_EQ(bytesOf(lists()), "a file where the folder should be");
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_NE(log.lines()[0].find("20250304T094100.250Z.json"), std::string::npos);

    Backups nowhere(folder.path() / "missing", clock);
    EXPECT_FALSE(nowhere.keepDamaged("key", "x"));
    EXPECT_EQ(log.lines().size(), 2U);
}

TEST_F(BackupsTest, KeepDamagedValuesBesideThePreferences) {
    EXPECT_TRUE(backups.keepDamaged("Quillo.items.v1", std::string("\0[{", 3)));
    EXPECT_TRUE(backups.keepDamaged("Quillo.items.v1", "second"));
    EXPECT_EQ(namesIn(folder.path()), (Names{"damaged-20250304T094100.250Z-Quillo.items.v1",
                                             "damaged-20250304T094100.251Z-Quillo.items.v1"}));
    EXPECT_EQ(bytesOf(folder.path() / "damaged-20250304T094100.250Z-Quillo.items.v1"),
              std::string("\0[{", 3));
}

TEST_F(BackupsTest, ListsAreFoundByTheirPlaceTheLatestFirst) {
    EXPECT_TRUE(backups.listTimes().empty());
    for (const char* list : {"[1]", "[2]", "[3]"})
        EXPECT_TRUE(backups.keepList(list));
    const std::vector<UtcMilliseconds> times = backups.listTimes();
    ASSERT_EQ(times.size(), 3u);
    EXPECT_EQ(fileNameTime(times[0]), "20250304T094100.252Z");
    EXPECT_EQ(fileNameTime(times[2]), "20250304T094100.250Z");
    EXPECT_EQ(backups.list(1)->bytes(), "[3]");
    EXPECT_EQ(backups.list(3)->bytes(), "[1]");
}

TEST_F(BackupsTest, SayWhichListThereIsNot) {
    EXPECT_EQ(backups.list(1).error().message, "no earlier list 1; none is kept");
    EXPECT_TRUE(backups.keepList("[1]"));
    EXPECT_EQ(backups.list(0).error().message, "no earlier list 0; 1 is kept");
    EXPECT_TRUE(backups.keepList("[2]"));
    EXPECT_EQ(backups.list(3).error().message, "no earlier list 3; 2 are kept");
}

TEST_F(BackupsTest, AListThatCannotBeReadIsAnError) {
    EXPECT_TRUE(backups.keepList("[1]"));
    const std::filesystem::path file = lists() / "20250304T094100.250Z.json";
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    EXPECT_EQ(backups.list(1).error().message, "cannot read " + file.string());
}

TEST_F(BackupsTest, ADamagedValueMayBeKeptWhileAnotherIs) {
    std::thread other([&] {
        for (int round = 0; round < 50; ++round)
            EXPECT_TRUE(backups.keepDamaged("other", "other"));
    });
    for (int round = 0; round < 50; ++round)
        EXPECT_TRUE(backups.keepDamaged("one", "one"));
    other.join();
    for (const std::string& name : namesIn(folder.path()))
        EXPECT_EQ(bytesOf(folder.path() / name), name.ends_with("-one") ? "one" : "other") << name;
    EXPECT_EQ(namesIn(folder.path()).size(), 100u);
}

} // namespace
} // namespace quillo
