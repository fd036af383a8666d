#include "sqlite/PreferencesLock.h"

#include "ChildProcess.h"
#include "PreferencesFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <ctime>
#include <optional>
#include <string>
#include <thread>

namespace quillo::support {

namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

std::string whyNot(const std::filesystem::path& folder, std::chrono::milliseconds patience) {
    const auto lock = PreferencesLock::acquire(folder, patience);
    return lock ? "" : lock.error().message;
}

TEST(PreferencesLock, KeepsOthersOutAndNamesItsHolder) {
    const PreferencesFolder folder;
    {
        const auto lock = PreferencesLock::acquire(folder.path(), 0ms);
        ASSERT_TRUE(lock);
        EXPECT_EQ(PreferencesFolder::read(folder.path() / "preferences.lock"),
                  std::to_string(getpid()) + "\n");
        EXPECT_EQ(whyNot(folder.path(), 0ms), folder.path().string() +
                                                  " is in use by another Quillo (process " +
                                                  std::to_string(getpid()) + ") that does not answer");
        ChildProcess other([&] { return whyNot(folder.path(), 0ms).empty() ? 1 : 0; });
        EXPECT_EQ(other.wait(), 0);
    }
    EXPECT_EQ(whyNot(folder.path(), 0ms), "");
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "preferences.lock"));
}

TEST(PreferencesLock, WaitsAsLongAsItIsToldTo) {
    const PreferencesFolder folder;
    const auto lock = PreferencesLock::acquire(folder.path(), 0ms);
    ASSERT_TRUE(lock);
    const auto start = std::chrono::steady_clock::now();
    const std::clock_t processorStart = std::clock();
    EXPECT_NE(whyNot(folder.path(), 300ms), "");
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited, 300ms);
    EXPECT_LT(waited, 3s);
    EXPECT_LT(static_cast<double>(std::clock() - processorStart) / CLOCKS_PER_SEC, 0.1)
        << "without keeping busy";
}

TEST(PreferencesLock, TakesOverWhenItIsLetGo) {
    const PreferencesFolder folder;
    auto lock = PreferencesLock::acquire(folder.path(), 0ms);
    ASSERT_TRUE(lock);
    std::optional<PreferencesLock> held(std::move(*lock));
    std::thread holder([&] {
        std::this_thread::sleep_for(100ms);
        held.reset();
    });
    EXPECT_EQ(whyNot(folder.path(), 10s), "");
    holder.join();
}

TEST(PreferencesLock, EndsWithItsProcess) {
    const PreferencesFolder folder;
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    ChildProcess child([&] {
        const auto lock = PreferencesLock::acquire(folder.path(), 0ms);
        const char held = lock ? 'y' : 'n';
        if (write(pipe[1], &held, 1) != 1)
            return 1;
        pause();
        return 0;
    });
    char held = 0;
    ASSERT_EQ(read(pipe[0], &held, 1), 1);
    ASSERT_EQ(held, 'y');
    EXPECT_THAT(whyNot(folder.path(), 0ms), HasSubstr("(process " + std::to_string(child.id()) + ")"));
    child.kill();
    EXPECT_EQ(whyNot(folder.path(), 10s), "");
    close(pipe[0]);
    close(pipe[1]);
}

TEST(PreferencesLock, OutlivesAChildThatWasForkedMeanwhile) {
    const PreferencesFolder folder;
    auto lock = PreferencesLock::acquire(folder.path(), 0ms);
    ASSERT_TRUE(lock);
    ChildProcess child([] { return pause(); }); // Has the lock file open, too.
    std::optional<PreferencesLock>(std::move(*lock)).reset();
    EXPECT_EQ(whyNot(folder.path(), 0ms), "");
}

TEST(PreferencesLock, IsNotHandedToOtherPrograms) {
    const PreferencesFolder folder;
    const auto lock = PreferencesLock::acquire(folder.path(), 0ms);
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
    auto first = PreferencesLock::acquire(folder.path(), 0ms);
    auto other = PreferencesLock::acquire(second.path(), 0ms);
    ASSERT_TRUE(first && other);
    PreferencesLock lock(std::move(*first));
    EXPECT_NE(whyNot(folder.path(), 0ms), "");
    lock = std::move(*other);
    EXPECT_EQ(whyNot(folder.path(), 0ms), "") << "let go when another takes its place";
    EXPECT_NE(whyNot(second.path(), 0ms), "");
}

TEST(PreferencesLock, IsClosedToOthersAndMakesItsFolder) {
    const PreferencesFolder outer;
    const std::filesystem::path folder = outer.path() / "share" / "quillo";
    const mode_t before = umask(0);
    const auto lock = PreferencesLock::acquire(folder, 0ms);
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
        EXPECT_THAT(whyNot(folder.path(), 10s), HasSubstr("preferences.lock for writing: Permission denied"));
        EXPECT_THAT(whyNot(folder.path() / "deeper", 10s), HasSubstr("Permission denied"));
    }));
}

TEST(PreferencesLock, AFileThatNamesNobodyIsNoHindrance) {
    const PreferencesFolder folder;
    PreferencesFolder::write(folder.path() / "preferences.lock", "rubbish that is longer than any number");
    const auto lock = PreferencesLock::acquire(folder.path(), 0ms);
    ASSERT_TRUE(lock);
    PreferencesFolder::write(folder.path() / "preferences.lock", "rubbish");
    EXPECT_THAT(whyNot(folder.path(), 0ms), Not(HasSubstr("process")));
}

} // namespace

} // namespace quillo::support
