#include "linux/TimeZoneWatch.h"

#include "base/Log.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace quillo {

TimeZoneWatch::TimeZoneWatch() : descriptor_(-1) {
    if (std::getenv("TZ") != nullptr)
        return;
    descriptor_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    // The folder: the link is replaced by another, which a watch of the file it leads to would not notice.
    if (descriptor_ < 0 ||
        inotify_add_watch(descriptor_, "/etc", IN_CREATE | IN_MOVED_TO | IN_CLOSE_WRITE) < 0) {
        log(std::string("a change of the time zone will not be noticed: ") + std::strerror(errno));
        return;
    }
    readable_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    QObject::connect(readable_.get(), &QSocketNotifier::activated, [this] { read(); });
}

TimeZoneWatch::~TimeZoneWatch() {
    readable_.reset();
    if (descriptor_ >= 0)
        close(descriptor_);
}

void TimeZoneWatch::read() {
    alignas(inotify_event) std::array<char, 16384> events;
    bool concerned = false;
    ssize_t count = 0;
    while ((count = ::read(descriptor_, events.data(), events.size())) > 0) {
        for (ssize_t at = 0; at < count;) {
            const auto* event = reinterpret_cast<const inotify_event*>(events.data() + at);
            // An overflow (IN_Q_OVERFLOW) tells that some were lost.
            concerned |= (event->mask & IN_Q_OVERFLOW) != 0 ||
                         (event->len > 0 && std::string_view(event->name) == "localtime");
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
    }
    if (concerned)
        changed.emit();
}

} // namespace quillo
