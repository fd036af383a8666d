#include "ChildProcess.h"
#include "FaultySystemCalls.h"
#include "OpenPreferences.h"
#include "PreferencesFolder.h"
#include "RawDatabase.h"
#include "support/CapturedLog.h"

#include <gmock/gmock.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace quillo::support {

namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Saves a small and a large value of that number and dies on the spot, so that the log keeps the last ones.
void saveAndDie(const std::filesystem::path& folder, std::int64_t number) {
    ChildProcess child([&] {
        const auto preferences = openPreferences(folder);
        preferences->apply(
            {{"number", Value(number)}, {"list", Value(Data(largeBytes(static_cast<unsigned>(number))))}});
        if (!preferences->flush())
            return 1;
        return ::kill(getpid(), SIGKILL);
    });
    ASSERT_EQ(child.wait(), -SIGKILL);
}

void expectNumber(const std::filesystem::path& folder, std::int64_t number) {
    const auto preferences = openPreferences(folder, Access::ReadOnly);
    EXPECT_EQ(preferences->integer("number"), number);
    EXPECT_EQ(preferences->data("list"), Data(largeBytes(static_cast<unsigned>(number))));
    EXPECT_EQ(flushError(*preferences), "");
}

void makeReadOnly(const std::filesystem::path& folder) {
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        std::filesystem::permissions(entry.path(), std::filesystem::perms::owner_read);
    std::filesystem::permissions(folder, std::filesystem::perms(0500));
}

TEST(ReadOnlyAccess, CreatesNothing) {
    const PreferencesFolder folder;
    EXPECT_EQ(openPreferences(folder.path() / "none" / "deeper", Access::ReadOnly)->value("a"), std::nullopt);
    EXPECT_EQ(openPreferences(folder.path(), Access::ReadOnly)->value("a"), std::nullopt);
    EXPECT_THAT(folder.names(), IsEmpty());
    PreferencesFolder::write(folder.file(), "");
    EXPECT_EQ(openPreferences(folder.path(), Access::ReadOnly)->value("a"), std::nullopt);
    EXPECT_THAT(folder.names(), ElementsAre("preferences.sqlite"));
    EXPECT_EQ(std::filesystem::file_size(folder.file()), 0U);
}

TEST(ReadOnlyAccess, ChangesNothing) {
    const PreferencesFolder folder;
    openPreferences(folder.path())
        ->apply({{"number", Value(std::int64_t{1})}, {"list", Value(Data(largeBytes(1)))}});
    const auto before = folder.contents();
    expectNumber(folder.path(), 1);
    EXPECT_EQ(folder.contents(), before);
}

TEST(ReadOnlyAccess, ReadsTheLogOfAProcessThatDiedAndLeavesIt) {
    const PreferencesFolder folder;
    saveAndDie(folder.path(), 1);
    saveAndDie(folder.path(), 2);
    const auto before = folder.contents();
    ASSERT_GT(before.at("preferences.sqlite-wal").bytes.size(), 300'000U);
    expectNumber(folder.path(), 2);
    auto after = folder.contents();
    EXPECT_EQ(after.at("preferences.sqlite"), before.at("preferences.sqlite"));
    EXPECT_EQ(after.at("preferences.sqlite-wal"), before.at("preferences.sqlite-wal"));
    expectNumber(folder.path(), 2);
    EXPECT_EQ(openPreferences(folder.path())->integer("number"), 2);
}

TEST(ReadOnlyAccess, WritesNothing) {
    const PreferencesFolder folder;
    openPreferences(folder.path())->set("a", std::int64_t{1});
    const auto before = folder.contents();
    const CapturedLog log;
    {
        const auto preferences = openPreferences(folder.path(), Access::ReadOnly);
        preferences->set("a", std::int64_t{2});
        EXPECT_EQ(preferences->integer("a"), 2) << "a process sees its own changes";
        EXPECT_THAT(flushError(*preferences), HasSubstr("for reading only"));
    }
    EXPECT_EQ(folder.contents(), before);
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST(ReadOnlyAccess, SeesOneMomentWhileAnotherWrites) {
    const PreferencesFolder folder;
    const auto writer = openPreferences(folder.path());
    const auto save = [&](std::int64_t number) {
        writer->apply(
            {{"number", Value(number)}, {"list", Value(Data(largeBytes(static_cast<unsigned>(number))))}});
        ASSERT_EQ(flushError(*writer), "");
    };
    save(1);
    const auto reader = openPreferences(folder.path(), Access::ReadOnly);
    save(2);
    EXPECT_EQ(reader->integer("number"), 1);
    EXPECT_EQ(reader->data("list"), Data(largeBytes(1))) << "the list that belongs to the number";
    expectNumber(folder.path(), 2);
    save(3);
    expectNumber(folder.path(), 3);
}

TEST(ReadOnlyAccess, ReadsAReadOnlyFolder) {
    const PreferencesFolder folder;
    openPreferences(folder.path())
        ->apply({{"number", Value(std::int64_t{1})}, {"list", Value(Data(largeBytes(1)))}});
    EXPECT_TRUE(asOrdinaryUser(folder.path(), [&] {
        makeReadOnly(folder.path());
        const auto before = folder.contents();
        expectNumber(folder.path(), 1);
        EXPECT_EQ(folder.contents(), before);
    }));
}

TEST(ReadOnlyAccess, ReadsTheLogInAReadOnlyFolder) {
    for (const bool index : {true, false}) {
        const PreferencesFolder folder;
        saveAndDie(folder.path(), 1);
        saveAndDie(folder.path(), 2);
        if (!index)
            std::filesystem::remove(folder.file().string() + "-shm");
        EXPECT_TRUE(asOrdinaryUser(folder.path(), [&] {
            makeReadOnly(folder.path());
            const auto before = folder.contents();
            expectNumber(folder.path(), 2);
            EXPECT_EQ(folder.contents(), before);
        }));
    }
}

TEST(ReadOnlyAccess, ReadsAReadOnlyFileInAFolderThatIsNot) {
    const PreferencesFolder folder;
    openPreferences(folder.path())
        ->apply({{"number", Value(std::int64_t{1})}, {"list", Value(Data(largeBytes(1)))}});
    EXPECT_TRUE(asOrdinaryUser(folder.path(), [&] {
        std::filesystem::permissions(folder.file(), std::filesystem::perms::owner_read);
        const auto before = folder.contents();
        expectNumber(folder.path(), 1);
        EXPECT_EQ(folder.contents(), before);
    }));
}

TEST(ReadOnlyAccess, FollowsAWriterInAFolderThatIsReadOnlyForThisUser) {
    const PreferencesFolder folder;
    if (geteuid() != 0)
        GTEST_SKIP() << "needs two users";
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    ChildProcess writer([&] {
        const auto preferences = openPreferences(folder.path());
        preferences->set("number", std::int64_t{1});
        preferences->set("list", Data(largeBytes(1)));
        return preferences->flush() && write(pipe[1], "y", 1) == 1 ? pause() : 1;
    });
    char ready = 0;
    ASSERT_EQ(read(pipe[0], &ready, 1), 1);
    close(pipe[0]);
    close(pipe[1]);
    // Others may read, as far as the modes go.
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    for (const char* name : {"preferences.sqlite", "preferences.sqlite-wal", "preferences.sqlite-shm"})
        std::filesystem::permissions(folder.path() / name, std::filesystem::perms(0644));
    ChildProcess reader([&] {
        if (setgroups(0, nullptr) != 0 || setgid(65534) != 0 || setuid(65534) != 0)
            return 2;
        expectNumber(folder.path(), 1);
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(reader.wait(), 0);
}

TEST(ReadOnlyAccess, ReadsOnAFullDisk) {
    const PreferencesFolder folder;
    openPreferences(folder.path())
        ->apply({{"number", Value(std::int64_t{1})}, {"list", Value(Data(largeBytes(1)))}});
    {
        FaultySystemCalls calls;
        calls.failWrites(ENOSPC);
        expectNumber(folder.path(), 1);
    }
    saveAndDie(folder.path(), 2);
    std::filesystem::remove(folder.file().string() + "-shm");
    FaultySystemCalls calls;
    calls.failWrites(ENOSPC);
    expectNumber(folder.path(), 2);
}

TEST(ReadOnlyAccess, AFolderThatCannotBeSearchedIsAnError) {
    const PreferencesFolder folder;
    std::filesystem::create_directory(folder.path() / "closed");
    openPreferences(folder.path() / "closed")->set("a", true);
    EXPECT_TRUE(asOrdinaryUser(folder.path(), [&] {
        std::filesystem::permissions(folder.path() / "closed", std::filesystem::perms::none);
        EXPECT_THAT(openingError(folder.path() / "closed", Access::ReadOnly), HasSubstr("Permission denied"));
        std::filesystem::permissions(folder.path() / "closed", std::filesystem::perms(0700));
        std::filesystem::permissions(folder.path() / "closed" / "preferences.sqlite",
                                     std::filesystem::perms::none);
        EXPECT_THAT(openingError(folder.path() / "closed", Access::ReadOnly), HasSubstr("Permission denied"));
    }));
}

} // namespace

} // namespace quillo::support
