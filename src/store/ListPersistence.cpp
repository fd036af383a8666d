#include "store/ListPersistence.h"

#include "base/Log.h"

#include <string>
#include <utility>
#include <vector>

namespace quillo {

namespace {

/// List and stamp as they are written, in one go: neither is ever seen without the other.
std::vector<Change> changesFor(const Data& list, double stamp) {
    return {{std::string(preference_keys::items), list}, {std::string(preference_keys::itemsStamp), stamp}};
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
            return {*std::move(items), preferences_.real(preference_keys::itemsStamp).value_or(0)};
        damaged_ = *data;
    } else if (const std::string* text = std::get_if<std::string>(&*stored)) {
        damaged_ = Data(*text); // Not ours, but perhaps a list that someone put there by hand.
    }
    log("the task list in the preferences cannot be read");
    return {};
}

void ListPersistence::save(const StampedList& list, bool toCloud) {
    lastSave_ = write(list, toCloud);
    if (!lastSave_)
        log(lastSave_.error().message);
}

Outcome ListPersistence::write(const StampedList& list, bool toCloud) {
    std::optional<std::string> bytes = list.items.encode();
    if (!bytes)
        return Error{"the task list cannot be written: it is too large, or a time in it is not finite"};
    if (!putDamagedAside())
        return Error{"the damaged task list cannot be copied aside, so nothing is saved over it"};
    const Data data(*std::move(bytes));
    preferences_.apply(changesFor(data, list.stamp));
    if (toCloud) {
        cloud_.apply(changesFor(data, list.stamp));
        cloud_.synchronize();
    }
    return success();
}

void ListPersistence::keepEarlier(const TaskList& earlier) {
    if (!backups_)
        return;
    if (const auto bytes = earlier.encode())
        backups_->keepList(*bytes);
}

void ListPersistence::synchronizeCloud() {
    cloud_.synchronize();
}

bool ListPersistence::putDamagedAside() {
    if (damaged_ && backups_ && !backups_->keepDamaged(preference_keys::items, damaged_->bytes()))
        return false;
    damaged_.reset();
    return true;
}

} // namespace quillo
