#include "store/ListPersistence.h"

#include "base/Log.h"

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace quillo {

namespace {

/// List and stamp as they are written, in one go: neither is ever seen without the other.
std::vector<Change> changesFor(const Data& list, double stamp) {
    return {{std::string(preference_keys::items), list}, {std::string(preference_keys::itemsStamp), stamp}};
}

double stampIn(const KeyValueStore& store) {
    const double stamp = store.real(preference_keys::itemsStamp).value_or(0);
    return std::isfinite(stamp) && stamp > 0 ? stamp : 0;
}

} // namespace

ListPersistence::ListPersistence(Preferences& preferences, CloudStore& cloud, Backups* backups)
    : preferences_(preferences), cloud_(cloud), backups_(backups) {}

StampedList ListPersistence::load() {
    const std::optional<Value> stored = preferences_.value(preference_keys::items);
    if (!stored)
        return {};
    if (const Data* data = std::get_if<Data>(&*stored)) {
        if (auto items = TaskList::decode(*data))
            return {*std::move(items), stampIn(preferences_)};
        damaged_ = *data;
    } else if (const std::string* text = std::get_if<std::string>(&*stored)) {
        damaged_ = Data(*text); // Not ours, but perhaps a list that someone put there by hand.
    }
    log("the task list in the preferences cannot be read");
    return {};
}

void ListPersistence::save(const StampedList& list, bool toCloud) {
    remember(write(list, toCloud));
}

Outcome ListPersistence::write(const StampedList& list, bool toCloud) {
    const std::optional<Data> data = list.items.encode();
    if (!data)
        return Error{"the task list cannot be written: it is too large, or a time in it is not finite"};
    Outcome kept = keep(*data, list.stamp);
    if (kept && toCloud)
        upload(*data, list.stamp);
    return kept;
}

std::optional<ReceivedList> ListPersistence::newerInCloud(const StampedList& local) const {
    for (;;) {
        const double stamp = stampIn(cloud_);
        if (!(local.stamp < stamp))
            return std::nullopt;
        const std::optional<Data> bytes = cloud_.data(preference_keys::items);
        if (stampIn(cloud_) != stamp)
            continue; // Another list came between the two readings: neither stamp is surely that of the
                      // bytes.
        std::optional<TaskList> items = bytes ? TaskList::decode(*bytes) : std::nullopt;
        if (!items)
            return std::nullopt;
        // Found equal here, the lists need no comparing task by task on the main thread.
        return ReceivedList{{*items == local.items ? local.items : *std::move(items), stamp}, *bytes};
    }
}

void ListPersistence::adopt(const ReceivedList& received) {
    remember(keep(received.bytes, received.list.stamp));
}

void ListPersistence::push(const StampedList& list) {
    if (const std::optional<Data> data = list.items.encode())
        upload(*data, list.stamp);
}

bool ListPersistence::keepEarlier(const TaskList& earlier) {
    if (!backups_)
        return false;
    const std::optional<Data> data = earlier.encode();
    return data && backups_->keepList(data->bytes());
}

std::vector<UtcMilliseconds> ListPersistence::earlierTimes() const {
    return backups_ != nullptr ? backups_->listTimes() : std::vector<UtcMilliseconds>();
}

Result<TaskList> ListPersistence::earlier(std::size_t which) const {
    if (!backups_)
        return Error{"no earlier lists are kept"};
    const Result<Data> bytes = backups_->list(which);
    if (!bytes)
        return bytes.error();
    std::optional<TaskList> items = TaskList::decode(*bytes);
    if (!items)
        return Error{"earlier list " + std::to_string(which) + " cannot be read"};
    return *std::move(items);
}

void ListPersistence::synchronizeCloud() {
    cloud_.synchronize();
}

Outcome ListPersistence::keep(const Data& bytes, double stamp) {
    if (!putDamagedAside())
        return Error{"the damaged task list cannot be copied aside, so nothing is saved over it"};
    preferences_.apply(changesFor(bytes, stamp));
    return success();
}

void ListPersistence::upload(const Data& bytes, double stamp) {
    cloud_.apply(changesFor(bytes, stamp));
    cloud_.synchronize();
}

void ListPersistence::remember(Outcome outcome) {
    lastSave_ = std::move(outcome);
    if (!lastSave_)
        log(lastSave_.error().message);
}

bool ListPersistence::putDamagedAside() {
    if (damaged_ && backups_ && !backups_->keepDamaged(preference_keys::items, damaged_->bytes()))
        return false;
    damaged_.reset();
    return true;
}

} // namespace quillo
