#include "sqlite/PreferencesLock.h"

#include "sqlite/PrivateFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <string>
#include <thread>
#include <utility>

namespace quillo {

namespace {

/// flock() itself can wait, but not for a given time; asking this often costs nothing and is quick enough for
/// a user.
constexpr std::chrono::milliseconds interval{10};

/// Zero, or the number of the error that ended the wait: EWOULDBLOCK when somebody else held the lock
/// throughout.
int waitForLock(int descriptor, std::chrono::milliseconds patience) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    for (;;) {
        if (flock(descriptor, LOCK_EX | LOCK_NB) == 0)
            return 0;
        if (errno == EINTR)
            continue;
        if (errno != EWOULDBLOCK)
            return errno;
        const auto left = deadline - std::chrono::steady_clock::now();
        if (left <= left.zero())
            return EWOULDBLOCK;
        std::this_thread::sleep_for(std::min<std::chrono::nanoseconds>(left, interval));
    }
}

/// The holder's process number, or 0 where the file holds none.
int holder(int descriptor) {
    std::array<char, 16> text{};
    const ssize_t length = pread(descriptor, text.data(), text.size(), 0);
    int process = 0;
    if (length > 0)
        std::from_chars(text.data(), text.data() + length, process);
    return std::max(process, 0);
}

void nameHolder(int descriptor) {
    const std::string text = std::to_string(getpid()) + '\n';
    // The number only helps whoever waits; the lock holds without it, also on a full disk.
    [[maybe_unused]] const bool written =
        ftruncate(descriptor, 0) == 0 && pwrite(descriptor, text.data(), text.size(), 0) > 0;
}

} // namespace

Result<PreferencesLock> PreferencesLock::acquire(const std::filesystem::path& folder,
                                                 std::chrono::milliseconds patience) {
    if (const Outcome made = makePrivateFolder(folder); !made)
        return made.error();
    const std::filesystem::path path = folder / "preferences.lock";
    const int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor < 0)
        return Error{"cannot open " + path.string() + " for writing: " + systemErrorText(errno)};
    const int error = waitForLock(descriptor, patience);
    if (error == 0) {
        nameHolder(descriptor);
        return PreferencesLock(descriptor);
    }
    const int process = holder(descriptor);
    close(descriptor);
    if (error != EWOULDBLOCK)
        return Error{"cannot lock " + path.string() + ": " + systemErrorText(error)};
    const std::string who = process > 0 ? " (process " + std::to_string(process) + ")" : "";
    return Error{folder.string() + " is in use by another Quillo" + who + " that does not answer"};
}

PreferencesLock::PreferencesLock(PreferencesLock&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)) {}

PreferencesLock& PreferencesLock::operator=(PreferencesLock&& other) noexcept {
    if (this != &other) {
        release();
        descriptor_ = std::exchange(other.descriptor_, -1);
    }
    return *this;
}

PreferencesLock::~PreferencesLock() {
    release();
}

void PreferencesLock::release() {
    if (descriptor_ < 0)
        return;
    [[maybe_unused]] const bool emptied = ftruncate(descriptor_, 0) == 0;
    flock(descriptor_, LOCK_UN); // Closing would not do where a child made by fork() still has the file open.
    close(descriptor_);
    descriptor_ = -1;
}

} // namespace quillo
