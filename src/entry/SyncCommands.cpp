#include "entry/SyncCommands.h"

#include "sync/MakeCarrier.h"
#include "sync/SyncPlace.h"

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quillo {

namespace {

using control::Answer;

Answer done() {
    return std::vector<control::NumberedItem>{};
}

std::string counted(const TaskList& list) {
    return std::to_string(list.size()) + (list.size() == 1 ? " task" : " tasks");
}

} // namespace

SyncCommands::SyncCommands(const SyncCommandsDependencies& dependencies)
    : with_(dependencies), exchanged_(with_.cloud.exchanged.connect([this] { resume(); })) {}

void SyncCommands::use(const control::UseSync& what, Reply reply) {
    const Result<SyncPlace> place = readSyncPlace(what.place);
    if (!place) {
        reply(place.error());
        return;
    }
    auto carrier = makeCarrier(*place, PlaceIs::New, with_.preferences);
    if (!carrier) {
        with_.preferences.remove(preference_keys::syncPlace);
        with_.cloud.use(nullptr);
        reply(done());
        return;
    }
    with_.cloud.lookAt(std::move(carrier), [this, what, reply = std::move(reply)](const auto& found) {
        reply(useLookedAt(what, found));
    });
}

void SyncCommands::now(Reply reply) {
    if (!with_.cloud.hasPlace()) {
        reply(Error{"no place is chosen to keep the list in step through; see quillo help sync"});
        return;
    }
    if (!isOn()) {
        reply(Error{"keeping in step is switched off in the settings"});
        return;
    }
    with_.cloud.exchange([reply = std::move(reply)](const Outcome& outcome) {
        reply(outcome ? done() : Answer(outcome.error()));
    });
}

Answer SyncCommands::useLookedAt(const control::UseSync& what,
                                 const Result<std::optional<StampedBytes>>& found) {
    if (!found)
        return found.error();
    std::optional<ReceivedList> theirs;
    if (*found) {
        std::optional<TaskList> items = TaskList::decode((*found)->items);
        if (!items)
            return Error{"the list there cannot be read"};
        theirs = ReceivedList{{*std::move(items), (*found)->stamp}, (*found)->items};
    }
    const TaskList& mine = with_.store.items();
    const bool differ = theirs && theirs->list.items != mine;
    const bool both = differ && !mine.empty() && !theirs->list.items.empty();
    if (!what.keep.empty() && what.keep != "mine" && what.keep != "theirs")
        return Error{"cannot keep \"" + what.keep + "\""};
    if (both && what.keep.empty())
        return Error{"there are tasks here (" + counted(mine) + ") and there (" +
                     counted(theirs->list.items) +
                     "): say --keep mine or --keep theirs; the other list is kept for quillo restore"};

    with_.preferences.set(preference_keys::syncPlace, what.place);
    if (!isOn())
        with_.preferences.set(preference_keys::cloudSync, true);
    with_.cloud.useLookedAt();
    const bool keepTheirs = both ? what.keep == "theirs" : differ && mine.empty();
    if (keepTheirs)
        with_.store.takeInstead(*theirs);
    else if (differ)
        with_.store.prefer(theirs->list);
    // So that the others see this computer there, whosever list it is.
    with_.store.pushToCloud();
    return done();
}

bool SyncCommands::isWanted() const {
    return isOn() && !std::holds_alternative<NoPlace>(chosenSyncPlace(with_.preferences));
}

bool SyncCommands::isOn() const {
    return with_.preferences.boolean(preference_keys::cloudSync).value_or(true);
}

/// What is saved goes to the cloud store by itself, but for that moment.
void SyncCommands::resume() {
    const double there = with_.cloud.real(preference_keys::itemsStamp).value_or(0);
    if (!with_.cloud.status().problem && isOn() && there < with_.store.lastLocalStamp().get())
        with_.store.pushToCloud();
}

} // namespace quillo
