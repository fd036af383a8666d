#include "ChildProcess.h"
#include "FaultySystemCalls.h"
#include "OpenPreferences.h"
#include "PreferencesFolder.h"
#include "RawDatabase.h"
#include "support/CapturedLog.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <cerrno>
#include <csignal>
#include <utility>

namespace quillo::support {

namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FailedWrite : public testing::Test {
protected:
    FailedWrite() {
        preferences->apply({{"list", Value(Data(largeBytes(1)))}, {"stamp", Value(1.0)}});
        EXPECT_EQ(flushError(*preferences), "");
    }

    void expectLastGoodState() {
        RawDatabase other(folder.file());
        EXPECT_EQ(Bytes(other.value("SELECT value FROM preferences WHERE key = 'list'")), largeBytes(1));
        EXPECT_EQ(other.value("SELECT value FROM preferences WHERE key = 'stamp'"), "1.0");
        EXPECT_EQ(other.value("PRAGMA integrity_check"), "ok");
        EXPECT_THAT(folder.damaged(), IsEmpty());
    }

    const CapturedLog log;
    const PreferencesFolder folder;
    std::unique_ptr<SqlitePreferences> preferences = openPreferences(folder.path());
};

TEST_F(FailedWrite, FullDiskKeepsTheOldAndTriesAgain) {
    FaultySystemCalls calls;
    calls.failWrites(ENOSPC);
    preferences->apply({{"list", Value(Data(largeBytes(2)))}, {"stamp", Value(2.0)}});
    EXPECT_THAT(flushError(*preferences), HasSubstr("cannot be written: the disk is full"));
    preferences->set("other", true);
    EXPECT_THAT(flushError(*preferences), HasSubstr("the disk is full"));
    expectLastGoodState();
    EXPECT_EQ(log.lines().size(), 1U) << "said once, however often it is tried";
    EXPECT_EQ(preferences->data("list"), Data(largeBytes(2))) << "visible all the while";
    EXPECT_EQ(preferences->real("stamp"), 2.0);

    calls.failWrites(EIO);
    EXPECT_THAT(flushError(*preferences), HasSubstr("Input/output error"));
    EXPECT_EQ(log.lines().size(), 2U) << "another failure";

    calls.failWrites(0);
    EXPECT_EQ(flushError(*preferences), "");
    EXPECT_EQ(preferences->data("list"), Data(largeBytes(2)));
    RawDatabase other(folder.file());
    EXPECT_EQ(Bytes(other.value("SELECT value FROM preferences WHERE key = 'list'")), largeBytes(2));
    EXPECT_EQ(other.value("SELECT value FROM preferences WHERE key = 'stamp'"), "2.0");
    EXPECT_EQ(other.value("SELECT value FROM preferences WHERE key = 'other'"), "1");
}

TEST_F(FailedWrite, TheNextChangeTakesTheFailedOnesWithIt) {
    FaultySystemCalls calls;
    calls.failWrites(ENOSPC);
    preferences->apply({{"list", Value(Data(largeBytes(2)))}, {"stamp", Value(2.0)}, {"gone", std::nullopt}});
    EXPECT_NE(flushError(*preferences), "");
    preferences->set("stamp", 3.0);
    EXPECT_NE(flushError(*preferences), "");
    calls.failWrites(0);
    preferences->set("other", true);
    preferences.reset();
    preferences = openPreferences(folder.path());
    EXPECT_EQ(preferences->data("list"), Data(largeBytes(2)));
    EXPECT_EQ(preferences->real("stamp"), 3.0) << "the newer one of the two that failed";
    EXPECT_EQ(preferences->boolean("other"), true);
}

TEST_F(FailedWrite, DestructionTriesOnceMoreAndLosesNothingElse) {
    FaultySystemCalls calls;
    calls.failWrites(ENOSPC);
    preferences->apply({{"list", Value(Data(largeBytes(2)))}, {"stamp", Value(2.0)}});
    preferences.reset();
    calls.failWrites(0);
    EXPECT_EQ(log.lines().size(), 1U);
    expectLastGoodState();
}

TEST_F(FailedWrite, FullDiskOnOpening) {
    preferences.reset();
    FaultySystemCalls calls;
    calls.failWrites(ENOSPC);
    EXPECT_THAT(openingError(folder.path()), HasSubstr("the disk is full"));
    calls.failWrites(0);
    expectLastGoodState();
}

/// The file may not grow beyond a limit that the kernel sets, which cuts a write off in its middle.
TEST(FailedWriteInKernel, FileSizeLimit) {
    const PreferencesFolder folder;
    openPreferences(folder.path())->apply({{"list", Value(Data(largeBytes(1)))}, {"stamp", Value(1.0)}});
    ChildProcess child([&] {
        const CapturedLog log;
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlim_t before = std::exchange(limit.rlim_cur, 500'000);
        setrlimit(RLIMIT_FSIZE, &limit);

        const auto preferences = openPreferences(folder.path());
        preferences->apply({{"list", Value(Data(largeBytes(2, 1'000'000)))}, {"stamp", Value(2.0)}});
        EXPECT_THAT(flushError(*preferences), HasSubstr("cannot be written: File too large"));
        EXPECT_EQ(preferences->data("list"), Data(largeBytes(2, 1'000'000)));
        {
            RawDatabase other(folder.file());
            EXPECT_EQ(Bytes(other.value("SELECT value FROM preferences WHERE key = 'list'")), largeBytes(1));
            EXPECT_EQ(other.value("PRAGMA integrity_check"), "ok");
        }
        limit.rlim_cur = before;
        setrlimit(RLIMIT_FSIZE, &limit);
        EXPECT_EQ(flushError(*preferences), "");
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(child.wait(), 0);
    const auto preferences = openPreferences(folder.path());
    EXPECT_EQ(preferences->data("list"), Data(largeBytes(2, 1'000'000)));
    EXPECT_EQ(preferences->real("stamp"), 2.0);
}

TEST_F(FailedWrite, AnotherProgramsLock) {
    {
        RawDatabase other(folder.file());
        ASSERT_EQ(other.run("BEGIN IMMEDIATE"), SQLITE_OK);
        preferences->apply({{"list", Value(Data(largeBytes(2)))}, {"stamp", Value(2.0)}});
        EXPECT_THAT(flushError(*preferences), HasSubstr("another program holds it locked"));
        expectLastGoodState();
    }
    EXPECT_EQ(flushError(*preferences), "");
    EXPECT_EQ(RawDatabase(folder.file()).value("SELECT value FROM preferences WHERE key = 'stamp'"), "2.0");
}

TEST_F(FailedWrite, WhatIsDiscardedIsNotWrittenLater) {
    {
        RawDatabase other(folder.file());
        ASSERT_EQ(other.run("BEGIN IMMEDIATE"), SQLITE_OK);
        preferences->apply({{"list", Value(Data(largeBytes(2)))}, {"stamp", Value(2.0)}});
        EXPECT_NE(flushError(*preferences), "");
        preferences->discard();
    }
    preferences.reset();
    expectLastGoodState();
}

TEST_F(FailedWrite, AnotherProgramsLockOnOpeningIsNoDamage) {
    preferences.reset();
    RawDatabase other(folder.file());
    ASSERT_EQ(other.run("PRAGMA locking_mode=EXCLUSIVE; BEGIN IMMEDIATE; DELETE FROM preferences"),
              SQLITE_OK);
    for (const Access access : {Access::ReadWrite, Access::ReadOnly})
        EXPECT_THAT(openingError(folder.path(), access), HasSubstr("another program holds it locked"));
    ASSERT_EQ(other.run("ROLLBACK"), SQLITE_OK);
    EXPECT_THAT(folder.damaged(), IsEmpty());
    EXPECT_EQ(other.value("SELECT count(*) FROM preferences"), "2");
}

TEST(FailedWriteInFolder, ReadOnlyFolder) {
    const PreferencesFolder folder;
    openPreferences(folder.path())->set("a", std::int64_t{1});
    EXPECT_TRUE(asOrdinaryUser(folder.path(), [&] {
        std::filesystem::permissions(folder.path(), std::filesystem::perms(0500));
        const auto before = folder.contents();
        EXPECT_THAT(openingError(folder.path()),
                    testing::AnyOf(HasSubstr("read-only"), HasSubstr("Permission denied")));
        EXPECT_THAT(openingError(folder.path() / "deeper"), HasSubstr("Permission denied"));
        EXPECT_EQ(folder.contents(), before);
        std::filesystem::permissions(folder.path(), std::filesystem::perms(0700));
        std::filesystem::permissions(folder.file(), std::filesystem::perms(0400));
        EXPECT_THAT(openingError(folder.path()), HasSubstr("read-only"));
        EXPECT_EQ(folder.contents(), before);
        std::filesystem::permissions(folder.file(), std::filesystem::perms(0000));
        EXPECT_THAT(openingError(folder.path()), HasSubstr("Permission denied"));
        std::filesystem::permissions(folder.file(), std::filesystem::perms(0600));
    }));
    EXPECT_EQ(openPreferences(folder.path())->integer("a"), 1);
}

/// A disk that cannot be read for a while must not cost the value that it would not give out.
TEST_F(FailedWrite, AValueThatCouldNotBeReadIsKeptWhenItIsReplaced) {
    preferences.reset();
    preferences = openPreferences(folder.path());
    {
        FaultySystemCalls calls;
        calls.failReads(EIO);
        EXPECT_EQ(preferences->data("list"), std::nullopt);
        EXPECT_THAT(flushError(*preferences), HasSubstr("cannot be read: Input/output error"));
        EXPECT_EQ(flushError(*preferences), "") << "said once";
    }
    expectLastGoodState();
    preferences->set("list", Data("[]"s));
    EXPECT_EQ(flushError(*preferences), "");
    RawDatabase other(folder.file());
    EXPECT_EQ(other.value("SELECT value FROM preferences WHERE key = 'list'"), "[]");
    EXPECT_EQ(other.value("SELECT value FROM preferences WHERE key LIKE 'Quillo.linux.unread-%Z-list'"),
              largeBytes(1));

    preferences->set("list", Data("[1]"s));
    EXPECT_EQ(flushError(*preferences), "");
    EXPECT_EQ(other.value("SELECT count(*) FROM preferences WHERE key LIKE 'Quillo.linux.unread-%'"), "1")
        << "only once";
}

TEST_F(FailedWrite, AValueThatCouldBeReadAfterAllIsReplacedPlainly) {
    preferences.reset();
    preferences = openPreferences(folder.path());
    {
        FaultySystemCalls calls;
        calls.failReads(EIO);
        EXPECT_EQ(preferences->data("list"), std::nullopt);
    }
    EXPECT_EQ(preferences->data("list"), Data(largeBytes(1)));
    preferences->set("list", Data("[]"s));
    EXPECT_NE(flushError(*preferences), "") << "the failure is still to be told";
    EXPECT_THAT(RawDatabase(folder.file()).column("SELECT key FROM preferences ORDER BY key"),
                ElementsAre("list", "stamp"));
}

} // namespace

} // namespace quillo::support
