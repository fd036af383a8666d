#include "sync/FolderWatch.h"

#include "base/Log.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

namespace quillo {

namespace {

constexpr std::uint32_t ends = IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr std::uint32_t inFolder = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | ends;
constexpr std::uint32_t inParent = IN_CREATE | IN_MOVED_TO | IN_ATTRIB | ends;

} // namespace

FolderWatch::FolderWatch(std::filesystem::path folder, IsOfInterest isOfInterest)
    : folder_(std::move(folder)), isOfInterest_(std::move(isOfInterest)),
      inotify_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)),
      mounts_(open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC)) {
    if (!inotify_.isOpen())
        log(std::string("changes of folders will not be noticed: ") + std::strerror(errno));
}

void FolderWatch::follow() {
    if (!inotify_.isOpen())
        return;
    std::filesystem::path next = folder_;
    while (!watch(next, next == folder_ ? inFolder : inParent)) {
        if (!next.has_relative_path())
            return;
        next = next.parent_path();
    }
    // What has come before its parent was watched is not told.
    std::error_code ignored;
    if (next != folder_ && std::filesystem::exists(next / wayDown(next), ignored))
        follow();
}

/// The part of the way from a parent down to the folder that lies in the parent.
std::filesystem::path FolderWatch::wayDown(const std::filesystem::path& parent) const {
    return *folder_.lexically_relative(parent).begin();
}

/// The kernel gives one watch to one folder: asking again for the one that is watched changes nothing, and
/// gives another one where another folder has its name by now.
bool FolderWatch::watch(const std::filesystem::path& folder, std::uint32_t events) {
    const int watch = inotify_add_watch(inotify_.number(), folder.c_str(), events);
    if (watch < 0)
        return false;
    const int earlier = std::exchange(watch_, watch);
    if (earlier >= 0 && earlier != watch)
        inotify_rm_watch(inotify_.number(), earlier);
    watched_ = folder;
    return true;
}

void FolderWatch::await(int wake) {
    for (;;) {
        std::array<pollfd, 3> sources{pollfd{wake, POLLIN, 0}, pollfd{inotify_.number(), POLLIN, 0},
                                      pollfd{mounts_.number(), POLLPRI, 0}};
        if (poll(sources.data(), sources.size(), -1) < 0) {
            if (errno == EINTR)
                continue;
            return;
        }
        const bool happened = sources[1].revents != 0 && readEvents();
        if (happened || sources[0].revents != 0 || sources[2].revents != 0)
            return;
    }
}

/// False if none of the events concerns the folder.
bool FolderWatch::readEvents() {
    alignas(inotify_event) std::array<char, 16384> events;
    // Only the way down to the folder is of interest in a parent, where much else may happen.
    const bool itself = watched_ == folder_;
    const std::filesystem::path next = itself ? std::filesystem::path() : wayDown(watched_);
    bool concerned = false;
    ssize_t count = 0;
    while ((count = read(inotify_.number(), events.data(), events.size())) > 0) {
        for (ssize_t at = 0; at < count;) {
            const auto* event = reinterpret_cast<const inotify_event*>(events.data() + at);
            const std::string_view name = event->len > 0 ? event->name : "";
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            if (event->wd == watch_ && (event->mask & IN_IGNORED) != 0)
                watch_ = -1;
            if ((event->mask & IN_Q_OVERFLOW) != 0 || event->wd == watch_)
                concerned |= name.empty() || (itself ? isOfInterest_(name) : name == next.native());
            else
                concerned |= watch_ < 0;
        }
    }
    return concerned;
}

} // namespace quillo
