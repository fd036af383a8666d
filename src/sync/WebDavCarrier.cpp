#include "sync/WebDavCarrier.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace quillo {

namespace {

using namespace std::chrono_literals;

constexpr const char* parentFolder = "quillo/";
constexpr const char* folder = "quillo/v1/";

/// Servers list the times of files in seconds, and some make etags of them.
constexpr LookTimes::Moment coarsestStep = 3s;

constexpr std::string_view weak = "W/"; ///< begins the etags that need not change with every byte

constexpr LookTimes::Moment betweenRefusedPasswords = 60s;

std::string pathOf(const Uuid& device) {
    return folder + deviceFileName(device);
}

template <class T>
WebDavFailure* failureOf(FromWebDav<T>& answer) {
    return std::get_if<WebDavFailure>(&answer);
}

/// Whether another file would be listed in another way.
bool tellsChanges(const ListedFile& file) {
    return !file.etag.empty() || (!file.length.empty() && !file.modified.empty());
}

bool isTooLarge(const ListedFile& file) {
    std::size_t length = 0;
    const char* const end = file.length.data() + file.length.size();
    const auto [stop, error] = std::from_chars(file.length.data(), end, length);
    return error == std::errc::result_out_of_range ||
           (error == std::errc() && stop == end && length > largestDeviceFile);
}

itimerspec at(LookTimes::Moment moment) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(moment);
    itimerspec time{};
    time.it_value.tv_sec = seconds.count();
    time.it_value.tv_nsec = (moment - seconds).count();
    return time;
}

void readAway(const Descriptor& counter) {
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t length = ::read(counter.number(), &count, sizeof count);
}

} // namespace

WebDavCarrier::WebDavCarrier(WebDavFolder place, Device self, SetUp setUp,
                             std::shared_ptr<Passwords> passwords, Connect connect)
    : place_(std::move(place)), folder_(place_.url + "/quillo/v1"), passwords_(std::move(passwords)),
      connect_(std::move(connect)), toBeMade_(setUp == SetUp::Yes),
      files_(std::move(self), folder_, [this](const Uuid& device) { return fetch(device); }),
      timer_(timerfd_create(CLOCK_BOOTTIME, TFD_NONBLOCK | TFD_CLOEXEC)),
      shownChanged_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

Exchange WebDavCarrier::exchange(Mirror& mirror) {
    Exchange exchange;
    if (LookTimes::now() < times_.notBefore()) {
        exchange.outcome = *lastProblem_;
        return exchange;
    }
    constexpr int mostPasswords = 2; // Another one may have been kept meanwhile.
    for (int tried = 0; tried < mostPasswords; ++tried) {
        attempt(mirror, exchange);
        if (!failure_ || failure_->kind != WebDavFailure::Kind::Unauthorized || !loggedIn_)
            break;
        refusal_ = {LookTimes::now(), failure_->why};
        loggedIn_ = false;
        asked_ = false;
    }
    if (exchange.outcome) {
        refusal_.reset();
        times_.hasSucceeded(LookTimes::now());
    } else {
        lastProblem_ = exchange.outcome.error();
        times_.hasFailed(LookTimes::now(), failure_ ? failure_->retryAfter : 0s);
    }
    return exchange;
}

/// What of it goes well stays done where something else does not.
void WebDavCarrier::attempt(Mirror& mirror, Exchange& exchange) {
    failure_.reset();
    exchange.outcome = reach();
    if (exchange.outcome && toBeMade_)
        exchange.outcome = makeFolders();
    if (exchange.outcome)
        exchange.outcome = look();
    if (!exchange.outcome)
        return;
    toBeMade_ = false;
    if (const auto outgoing = mirror.outgoing())
        exchange.outcome = send(*outgoing);
    files_.tell(mirror, exchange);
}

void WebDavCarrier::awaitNews(int wake) {
    for (;;) {
        const itimerspec next = at(times_.next(shown_));
        timerfd_settime(timer_.number(), TFD_TIMER_ABSTIME, &next, nullptr);
        std::array<pollfd, 3> sources{pollfd{wake, POLLIN, 0}, pollfd{timer_.number(), POLLIN, 0},
                                      pollfd{shownChanged_.number(), POLLIN, 0}};
        if (poll(sources.data(), sources.size(), -1) < 0 && errno != EINTR)
            return;
        readAway(timer_);
        readAway(shownChanged_);
        asked_ = sources[0].revents != 0;
        if (asked_ || sources[1].revents != 0)
            return;
    }
}

void WebDavCarrier::setShown(bool shown) {
    const std::uint64_t one = 1;
    if (shown_.exchange(shown) != shown) [[maybe_unused]]
        const ssize_t written = write(shownChanged_.number(), &one, sizeof one);
}

void WebDavCarrier::giveUp() {
    const std::lock_guard lock(mutex_);
    givenUp_ = true;
    if (server_)
        server_->giveUp();
}

Result<DeviceFile> WebDavCarrier::fileOf(const Uuid& device) {
    auto file = readAnew(device);
    if (auto* const failure = failureOf(file))
        return std::move(failure->why);
    return std::get<DeviceFile>(std::move(file));
}

Outcome WebDavCarrier::forget(const Uuid& device, double stamp) {
    const auto file = readAnew(device);
    if (const auto* const failure = std::get_if<WebDavFailure>(&file))
        return failure->kind == WebDavFailure::Kind::Missing ? success() : failure->why;
    if (std::get<DeviceFile>(file).list.stamp != stamp)
        return Error{"that computer has just left another list"};
    auto removed = server_->remove(pathOf(device));
    if (auto* const failure = failureOf(removed))
        return std::move(failure->why);
    return success();
}

Outcome WebDavCarrier::reach() {
    const Outcome connected = connect();
    return connected ? logIn() : connected;
}

Outcome WebDavCarrier::connect() {
    if (server_)
        return success();
    Result<std::unique_ptr<WebDavServer>> server = connect_(place_.url);
    if (!server)
        return server.error();
    const std::lock_guard lock(mutex_);
    server_ = std::move(*server);
    if (givenUp_)
        server_->giveUp();
    return success();
}

Outcome WebDavCarrier::logIn() {
    if (place_.user.empty() || loggedIn_)
        return success();
    const auto found =
        passwords_ ? passwords_->find(place_) : Result<std::optional<std::string>>(std::nullopt);
    if (!found)
        return found.error();
    if (!*found)
        return passwordIsWanted(place_);
    const bool mayTry = asked_ && refusal_ && LookTimes::now() >= refusal_->when + betweenRefusedPasswords;
    if (refusal_ && *found == password_ && !mayTry)
        return refusal_->why;
    password_ = *found;
    server_->authenticate(place_.user, *password_);
    loggedIn_ = true;
    return success();
}

Outcome WebDavCarrier::makeFolders() {
    for (const char* path : {parentFolder, folder}) {
        auto made = server_->makeFolder(path);
        if (auto* const failure = failureOf(made)) {
            if (failure->kind == WebDavFailure::Kind::Missing)
                failure->why = Error{place_.url + " is not there"};
            return failed(std::move(*failure));
        }
    }
    return success();
}

Outcome WebDavCarrier::look() {
    auto listing = server_->list(folder);
    if (auto* const failure = failureOf(listing)) {
        if (failure->kind == WebDavFailure::Kind::Missing)
            failure->why = Error{folder_ + " is not there"};
        return failed(std::move(*failure));
    }
    std::set<Uuid> there;
    for (ListedFile& file : std::get<std::vector<ListedFile>>(listing)) {
        const std::optional<Uuid> device = deviceOfFileName(file.name);
        if (!device || !there.insert(*device).second)
            continue;
        if (Outcome outcome = lookAt(*device, std::move(file)); !outcome)
            return outcome;
    }
    files_.keep(there);
    std::erase_if(seen_, [&](const auto& seen) { return !there.contains(seen.first); });
    return success();
}

Outcome WebDavCarrier::lookAt(const Uuid& device, ListedFile listed) {
    if (listed.etag.starts_with(weak)) // It may become a strong one, of the same file.
        listed.etag.erase(0, weak.size());
    Seen& seen = seen_[device];
    if (seen.listed != listed) {
        seen.listed = std::move(listed);
        seen.since = LookTimes::now();
        seen.settled = false;
    }
    if (seen.settled && tellsChanges(seen.listed))
        return success();
    if (isTooLarge(seen.listed)) {
        seen.settled = true;
        return files_.take(device, Error{"it is too large"});
    }
    if (tellsChanges(seen.listed) || seen.etag.empty())
        return files_.read(device);
    const LookTimes::Moment began = LookTimes::now();
    auto fetched = server_->fetch(pathOf(device), seen.etag);
    const auto* const file = std::get_if<FetchedFile>(&fetched);
    if (file != nullptr && !file->bytes)
        return success();
    return files_.take(device, bytesOf(device, std::move(fetched), began));
}

DeviceFiles::Bytes WebDavCarrier::fetch(const Uuid& device) {
    const LookTimes::Moment began = LookTimes::now();
    return bytesOf(device, server_->fetch(pathOf(device), ""), began);
}

DeviceFiles::Bytes WebDavCarrier::bytesOf(const Uuid& device, FromWebDav<FetchedFile> fetched,
                                          LookTimes::Moment began) {
    if (auto* const failure = failureOf(fetched)) {
        using Kind = WebDavFailure::Kind;
        if (failure->kind == Kind::Missing || failure->kind == Kind::Forbidden ||
            failure->kind == Kind::TooLarge)
            return std::move(failure->why); // The others may well be had.
        return PlaceFailed{failed(std::move(*failure))};
    }
    FetchedFile& file = std::get<FetchedFile>(fetched);
    Seen& seen = seen_[device];
    seen.etag = std::move(file.etag);
    // Nobody else writes this device's.
    seen.settled = device == files_.self() || began - seen.since >= coarsestStep;
    return std::move(file.bytes).value_or("");
}

Outcome WebDavCarrier::send(const StampedBytes& list) {
    const auto bytes = files_.toBeWritten(list);
    if (!bytes)
        return bytes.error();
    if (!*bytes)
        return success();
    // What is there now is read back at the next look.
    seen_.erase(files_.self());
    auto stored = server_->store(pathOf(files_.self()), **bytes);
    if (auto* const failure = failureOf(stored)) {
        files_.forget(files_.self());
        if (failure->kind == WebDavFailure::Kind::Missing)
            failure->why = Error{folder_ + " is not there"};
        return failed(std::move(*failure));
    }
    files_.hasBeenWritten(list);
    return success();
}

FromWebDav<DeviceFile> WebDavCarrier::readAnew(const Uuid& device) {
    using Kind = WebDavFailure::Kind;
    if (Outcome reached = reach(); !reached)
        return WebDavFailure{Kind::Other, reached.error()};
    const std::string name = folder_ + '/' + deviceFileName(device);
    auto fetched = server_->fetch(pathOf(device), "");
    if (auto* const failure = failureOf(fetched)) {
        if (failure->kind == Kind::Missing)
            failure->why = Error{name + " is not there"};
        return std::move(*failure);
    }
    auto file = decodeDeviceFileOf(device, std::get<FetchedFile>(fetched).bytes.value_or(""));
    if (!file)
        return WebDavFailure{Kind::Other, Error{name + " cannot be read"}};
    return *std::move(file);
}

Error WebDavCarrier::failed(WebDavFailure failure) {
    failure_ = std::move(failure);
    return failure_->why;
}

} // namespace quillo
