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
#include <utility>

namespace quillo {

namespace {

std::filesystem::path pathIn(const std::filesystem::path& folder) {
    return folder / "preferences.lock";
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

Result<std::optional<PreferencesLock>> PreferencesLock::tryAcquire(const std::filesystem::path& folder) {
    if (const Outcome made = makePrivateFolder(folder); !made)
        return made.error();
    const std::filesystem::path path = pathIn(folder);
    const int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor < 0)
        return Error{"cannot open " + path.string() + " for writing: " + systemErrorText(errno)};
    int locked = 0;
    do
        locked = flock(descriptor, LOCK_EX | LOCK_NB);
    while (locked != 0 && errno == EINTR);
    if (locked == 0) {
        nameHolder(descriptor);
        return std::optional(PreferencesLock(descriptor));
    }
    const int error = errno;
    close(descriptor);
    if (error == EWOULDBLOCK)
        return std::optional<PreferencesLock>();
    return Error{"cannot lock " + path.string() + ": " + systemErrorText(error)};
}

Error PreferencesLock::heldByAnother(const std::filesystem::path& folder) {
    const int descriptor = open(pathIn(folder).c_str(), O_RDONLY | O_CLOEXEC);
    const int process = descriptor >= 0 ? holder(descriptor) : 0;
    if (descriptor >= 0)
        close(descriptor);
    const std::string who = process > 0 ? " (process " + std::to_string(process) + ")" : "";
    return {folder.string() + " is in use by another Quillo" + who + " that does not answer"};
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
