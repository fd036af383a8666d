#include "sync/SyncedCloudStore.h"

#include "base/Log.h"
#include "ports/Preferences.h"

#include <algorithm>
#include <cmath>

namespace quillo {

namespace {

template <class T>
const T* valueOf(const std::vector<Change>& changes, std::string_view key) {
    const auto change = std::find_if(changes.begin(), changes.end(),
                                     [&](const Change& candidate) { return candidate.key == key; });
    return change != changes.end() && change->value ? std::get_if<T>(&*change->value) : nullptr;
}

} // namespace

SyncedCloudStore::SyncedCloudStore(std::filesystem::path dataFolder, Executor& mainExecutor,
                                   const Clock& clock, std::unique_ptr<Carrier> carrier)
    : dataFolder_(std::move(dataFolder)), mainExecutor_(mainExecutor), clock_(clock) {
    if (carrier)
        use(std::move(carrier));
}

SyncedCloudStore::~SyncedCloudStore() {
    if (current_.transfer && !current_.transfer->await(patienceAtEnd))
        log("what is still on its way to the other computers goes on at the next start");
}

std::optional<Value> SyncedCloudStore::value(std::string_view key) const {
    const std::optional<StampedBytes> latest = current().mirror->latest();
    if (latest && key == preference_keys::items)
        return latest->items;
    if (latest && key == preference_keys::itemsStamp)
        return latest->stamp;
    return std::nullopt;
}

void SyncedCloudStore::apply(std::vector<Change> changes) {
    const auto* const items = valueOf<Data>(changes, preference_keys::items);
    const auto* const stamp = valueOf<double>(changes, preference_keys::itemsStamp);
    if (items && stamp && std::isfinite(*stamp) && *stamp >= 0)
        current().mirror->put({*items, *stamp});
    else
        log("only a list with its stamp can be sent to other computers");
}

void SyncedCloudStore::synchronize() {
    if (const auto transfer = current().transfer)
        transfer->request();
}

void SyncedCloudStore::use(std::unique_ptr<Carrier> carrier) {
    status_ = {};
    replaceCurrent(carrier ? begin(std::move(carrier), true) : Side{});
    current_.mirror->holdBack(held_);
}

void SyncedCloudStore::lookAt(std::unique_ptr<Carrier> carrier,
                              std::function<void(const Result<std::optional<StampedBytes>>&)> told) {
    if (const auto earlier = std::exchange(tellLookedAt_, std::move(told)))
        earlier(Error{"another place was chosen meanwhile"});
    lookedAt_ = begin(std::move(carrier), false);
}

void SyncedCloudStore::useLookedAt() {
    status_ = {};
    replaceCurrent(std::exchange(lookedAt_, {}));
    *current_.inUse = true;
    current_.mirror->holdBack(held_);
    synchronize();
}

void SyncedCloudStore::holdBack(bool held) {
    held_ = held;
    current_.mirror->holdBack(held);
}

void SyncedCloudStore::setShown(bool shown) {
    shown_ = shown;
    if (current_.transfer)
        current_.transfer->setShown(shown);
}

void SyncedCloudStore::exchange(std::function<void(const Outcome&)> told) {
    if (current_.transfer)
        waiting_.push_back({current_.transfer->request(), std::move(told)});
    else
        told(Error{"no place is chosen to keep the list in step through"});
}

bool SyncedCloudStore::await(std::chrono::milliseconds limit) const {
    return !current_.transfer || current_.transfer->await(limit);
}

SyncedCloudStore::Side SyncedCloudStore::current() const {
    const std::lock_guard lock(mutex_);
    return current_;
}

void SyncedCloudStore::replaceCurrent(Side side) {
    for (const Waiting& waiting : std::exchange(waiting_, {}))
        waiting.told(Error{"another place was chosen meanwhile"});
    if (side.transfer)
        side.transfer->setShown(shown_);
    const std::lock_guard lock(mutex_);
    std::swap(current_, side);
}

/// Begins to exchange; nothing is sent as long as the mirror is held back.
SyncedCloudStore::Side SyncedCloudStore::begin(std::unique_ptr<Carrier> carrier, bool inUse) {
    Side side;
    side.inUse = std::make_shared<std::atomic<bool>>(inUse);
    side.mirror->holdBack(true);
    auto take = scope_.guard([this](const Mirror* from, const SyncStatus& status, bool news,
                                    Transfer::Ticket ticket) { this->take(from, status, news, ticket); });
    side.transfer = std::make_shared<Transfer>(
        std::move(carrier), side.mirror,
        [this, take, mirror = side.mirror, inUse = side.inUse, status = SyncStatus(), resumed = !inUse,
         answered = Transfer::Ticket{0}](const Exchange& exchange, Transfer::Ticket ticket) mutable {
            if (!std::exchange(resumed, true))
                status = readSyncStatus(dataFolder_);
            status.problem.reset();
            if (exchange.outcome) {
                status.lastInStep = clock_.now();
                status.devices = exchange.devices;
            } else {
                status.problem = exchange.outcome.error().message;
                if (!exchange.devices.empty())
                    status.devices = exchange.devices;
            }
            if (*inUse)
                writeSyncStatus(dataFolder_, status);
            const bool asked = std::exchange(answered, ticket) < ticket;
            mainExecutor_.post([take, mirror, status, news = mirror->hasNews() && (exchange.changed || asked),
                                ticket]() mutable { take(mirror.get(), status, news, ticket); });
        });
    return side;
}

void SyncedCloudStore::take(const Mirror* from, const SyncStatus& status, bool news,
                            Transfer::Ticket ticket) {
    if (from == lookedAt_.mirror.get() && tellLookedAt_) {
        const auto told = std::exchange(tellLookedAt_, nullptr);
        told(status.problem ? Result<std::optional<StampedBytes>>(Error{*status.problem})
                            : lookedAt_.mirror->latest());
        if (from == lookedAt_.mirror.get())
            lookedAt_ = {};
        return;
    }
    if (from != current_.mirror.get())
        return;
    status_ = status;
    if (news)
        externalChange.emit();
    exchanged.emit();
    const Outcome outcome = status.problem ? Outcome(Error{*status.problem}) : success();
    for (Waiting& waiting : std::exchange(waiting_, {})) {
        if (waiting.ticket <= ticket)
            waiting.told(outcome);
        else
            waiting_.push_back(std::move(waiting));
    }
}

} // namespace quillo
