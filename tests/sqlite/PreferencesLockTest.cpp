#include "sqlite/PreferencesLock.h"

#include "ChildProcess.h"
#include "PreferencesFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <optional>
#include <string>

namespace quillo::support {

namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

/// The lock, or why there is none.
Result<PreferencesLock> acquire(const std::filesystem::path& folder) {
    auto lock = PreferencesLock::tryAcquire(folder);
    if (!lock)
        return lock.error();
    if (!*lock)
        return PreferencesLock::heldByAnother(folder);
    return *std::move(*lock);
}

std::string whyNot(const std::filesystem::path& folder) {
    const auto lock = acquire(folder);
    return lock ? "" : lock.error().message;
}

TEST(PreferencesLock, KeepsOthersOutAndNamesItsHolder) {
    const PreferencesFolder folder;
    {
        const auto lock = acquire(folder.path());
        ASSERT_TRUE(lock);
        EXPECT_EQ(PreferencesFolder::read(folder.path() / "preferences.lock"),
                  std::to_string(getpid()) + "\n");
        EXPECT_EQ(whyNot(folder.path()), folder.path().string() + " is in use by another Quillo (process " +
                                             std::to_string(getpid()) + ") that does not answer");
        ChildProcess other([&] { return whyNot(folder.path()).empty() ? 1 : 0; });
        EXPECT_EQ(other.wait(), 0);
    }
    EXPECT_EQ(whyNot(folder.path()), "");
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "preferences.lock"));
}

TEST(PreferencesLock, AnswersAtOnceWhileItIsHeld) {
    const PreferencesFolder folder;
    const auto lock = acquire(folder.path());
    ASSERT_TRUE(lock);
    const auto start = std::chrono::steady_clock::now();
    const auto second = PreferencesLock::tryAcquire(folder.path());
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);
    ASSERT_TRUE(second) << second.error().message;
    EXPECT_FALSE(*second);
}

TEST(PreferencesLock, EndsWithItsProcess) {
    const PreferencesFolder folder;
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    ChildProcess child([&] {
        const auto lock = acquire(folder.path());
        const char held = lock ? 'y' : 'n';
        if (write(pipe[1], &held, 1) != 1)
            return 1;
        pause();
        return 0;
    });
    char held = 0;
    ASSERT_EQ(read(pipe[0], &held, 1), 1);
    ASSERT_EQ(held, 'y');
    EXPECT_THAT(whyNot(folder.path()), HasSubstr("(process " + std::to_string(child.id()) + ")"));
    child.kill();
    EXPECT_EQ(whyNot(folder.path()), "");
    close(pipe[0]);
    close(pipe[1]);
}

TEST(PreferencesLock, OutlivesAChildThatWasForkedMeanwhile) {
    const PreferencesFolder folder;
    auto lock = acquire(folder.path());
    ASSERT_TRUE(lock);
    ChildProcess child([] { return pause(); }); // Has the lock file open, too.
    std::optional<PreferencesLock>(std::move(*lock)).reset();
    EXPECT_EQ(whyNot(folder.path()), "");
}

TEST(PreferencesLock, IsNotHandedToOtherPrograms) {
    const PreferencesFolder folder;
    const auto lock = acquire(folder.path());
    ASSERT_TRUE(lock);
    int found = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (std::filesystem::read_symlink(entry.path(), gone) != folder.path() / "preferences.lock")
            continue;
        ++found;
        EXPECT_NE(fcntl(std::stoi(entry.path().filename().string()), F_GETFD) & FD_CLOEXEC, 0);
    }
    EXPECT_EQ(found, 1);
}

TEST(PreferencesLock, Moves) {
    const PreferencesFolder folder;
    const PreferencesFolder second;
    auto first = acquire(folder.path());
    auto other = acquire(second.path());
    ASSERT_TRUE(first && other);
    PreferencesLock lock(std::move(*first));
    EXPECT_NE(whyNot(folder.path()), "");
    lock = std::move(*other);
    EXPECT_EQ(whyNot(folder.path()), "") << "let go when another takes its place";
    EXPECT_NE(whyNot(second.path()), "");
}

TEST(PreferencesLock, IsClosedToOthersAndMakesItsFolder) {
    const PreferencesFolder outer;
    const std::filesystem::path folder = outer.path() / "share" / "quillo";
    const mode_t before = umask(0);
    const auto lock = acquire(folder);
    umask(before);
    ASSERT_TRUE(lock);
    struct stat status {};
    ASSERT_EQ(stat((folder / "preferences.lock").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
    ASSERT_EQ(stat(folder.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700U);
}

TEST(PreferencesLock, AReadOnlyFolderIsAnError) {
    const PreferencesFolder folder;
    EXPECT_TRUE(asOrdinaryUser(folder.path(), [&] {
        std::filesystem::permissions(folder.path(), std::filesystem::perms(0500));
        EXPECT_THAT(whyNot(folder.path()), HasSubstr("preferences.lock for writing: Permission denied"));
        EXPECT_THAT(whyNot(folder.path() / "deeper"), HasSubstr("Permission denied"));
    }));
}

TEST(PreferencesLock, AFileThatNamesNobodyIsNoHindrance) {
    const PreferencesFolder folder;
    PreferencesFolder::write(folder.path() / "preferences.lock", "rubbish that is longer than any number");
    const auto lock = acquire(folder.path());
    ASSERT_TRUE(lock);
    PreferencesFolder::write(folder.path() / "preferences.lock", "rubbish");
    EXPECT_THAT(whyNot(folder.path()), Not(HasSubstr("process")));
}

} // namespace

} // namespace quillo::support
