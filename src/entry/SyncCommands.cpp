#include "entry/SyncCommands.h"

#include "base/Log.h"
#include "entry/Identifiers.h"
#include "sync/SyncPlace.h"
#include "sync/SyncStatus.h"
#include "sync/ThisDevice.h"
#include "sync/TriedPassword.h"

#include <algorithm>
#include <cctype>
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

Answer answerOf(const Outcome& outcome) {
    return outcome ? done() : Answer(outcome.error());
}

std::string counted(std::size_t tasks) {
    return std::to_string(tasks) + (tasks == 1 ? " task" : " tasks");
}

/// The server whose user has a password there, if the place is one.
std::optional<WebDavFolder> withPassword(const SyncPlace& place) {
    const auto* const server = std::get_if<WebDavFolder>(&place);
    return server != nullptr && !server->user.empty() ? std::optional(*server) : std::nullopt;
}

/// An error, which does not repeat it, if it can be no password of that place.
Outcome checkPasswordOf(const SyncPlace& place, const std::string& password) {
    return withPassword(place) ? checkPassword(password)
                               : Error{"that place wants no password: it has no user"};
}

} // namespace

SyncCommands::SyncCommands(const SyncCommandsDependencies& dependencies)
    : with_(dependencies), exchanged_(with_.cloud.exchanged.connect([this] { resume(); })),
      aside_("Quillo.Aside", with_.mainExecutor) {}

SyncCommands::~SyncCommands() {
    for (const auto& way : forgetting_) {
        if (const auto carrier = way.lock())
            carrier->giveUp();
    }
}

/// A place that may come to be used.
struct SyncCommands::Trial {
    SyncPlace place;
    std::unique_ptr<Carrier> carrier; ///< null for no place
    std::shared_ptr<TriedPassword> tried = nullptr;
};

Result<SyncCommands::Trial> SyncCommands::begin(const control::UseSync& what) const {
    const Result<SyncPlace> place = readSyncPlace(what.place);
    if (!place)
        return place.error();
    if (std::holds_alternative<NoPlace>(*place))
        return Trial{*place, nullptr};
    std::shared_ptr<TriedPassword> tried;
    if (what.password) {
        if (const Outcome checked = checkPasswordOf(*place, *what.password); !checked)
            return checked.error();
        tried = std::make_shared<TriedPassword>(*withPassword(*place), *what.password, with_.passwords);
    }
    auto carrier =
        with_.makeCarrier(*place, PlaceIs::New, with_.preferences, tried ? tried : with_.passwords);
    if (!carrier)
        return Error{"this Quillo knows no way to such a place"};
    return Trial{*place, std::move(carrier), std::move(tried)};
}

void SyncCommands::use(const control::UseSync& what, Reply reply) {
    choose(what, [reply = std::move(reply)](const Chosen& chosen) {
        if (!chosen)
            reply(chosen.error());
        else if (*chosen)
            reply(Error{"there are tasks here (" + counted((*chosen)->here) + ") and there (" +
                        counted((*chosen)->there) +
                        "): say --keep mine or --keep theirs; the other list is kept for quillo restore"});
        else
            reply(done());
    });
}

void SyncCommands::choose(const control::UseSync& what, std::function<void(const Chosen&)> told) {
    Result<Trial> trial = begin(what);
    if (!trial) {
        told(trial.error());
        return;
    }
    const auto tell = [told](const Outcome& outcome) {
        told(outcome ? Chosen(std::nullopt) : Chosen(outcome.error()));
    };
    const SyncPlace before = chosenSyncPlace(with_.preferences);
    if (!trial->carrier) {
        with_.preferences.remove(preference_keys::syncPlace);
        with_.cloud.use(nullptr);
        leave(before, tell);
        return;
    }
    with_.cloud.lookAt(std::move(trial->carrier),
                       [this, place = trial->place, before, keep = what.keep, tried = trial->tried,
                        password = what.password, told, tell](const auto& found) {
                           const Chosen used = useLookedAt(place, keep, found);
                           const bool isUsed = used && !*used;
                           if (isUsed && before != place)
                               leave(before, [](const Outcome& left) {
                                   if (!left)
                                       log(left.error().message);
                               });
                           if (!isUsed || !tried) {
                               told(used);
                               return;
                           }
                           aside_.run(
                               [tried, server = *withPassword(place), password = *password] {
                                   const auto kept = tried->keep(server, password);
                                   tried->end();
                                   return kept;
                               },
                               scope_.guard([tell](const Result<Passwords::Kept>& kept) {
                                   tell(kept ? success() : Outcome(kept.error()));
                               }));
                       });
}

void SyncCommands::test(const control::UseSync& what, std::function<void(const Outcome&)> told) {
    Result<Trial> trial = begin(what);
    if (!trial || !trial->carrier) {
        told(trial ? success() : Outcome(trial.error()));
        return;
    }
    with_.cloud.lookAt(std::move(trial->carrier), [told = std::move(told)](const auto& found) {
        told(found ? success() : Outcome(found.error()));
    });
}

/// Forgets the password of a place that is not used any more.
void SyncCommands::leave(const SyncPlace& place, std::function<void(const Outcome&)> told) {
    const std::optional<WebDavFolder> server = withPassword(place);
    if (!server) {
        told(success());
        return;
    }
    aside_.run([passwords = with_.passwords, server] { return passwords->forget(*server); },
               scope_.guard([told = std::move(told)](const Outcome& forgotten) {
                   told(forgotten ? success()
                                  : Outcome(Error{"the place is not used any more, but its password could "
                                                  "not be forgotten: " +
                                                  forgotten.error().message}));
               }));
}

void SyncCommands::now(const control::SyncNow& what, Reply reply) {
    if (what.password)
        givePassword(*what.password, std::move(reply));
    else
        exchange(std::move(reply));
}

void SyncCommands::givePassword(std::string password, Reply reply) {
    const SyncPlace place = chosenSyncPlace(with_.preferences);
    if (const Outcome checked = checkPasswordOf(place, password); !checked) {
        reply(checked.error());
        return;
    }
    aside_.run([passwords = with_.passwords, server = *withPassword(place),
                password = std::move(password)] { return passwords->keep(server, password); },
               scope_.guard([this, reply = std::move(reply)](const Result<Passwords::Kept>& kept) {
                   if (kept)
                       exchange(reply);
                   else
                       reply(kept.error());
               }));
}

void SyncCommands::exchange(Reply reply) {
    if (!with_.cloud.hasPlace()) {
        reply(Error{"no place is chosen to keep the list in step through; see quillo help sync"});
        return;
    }
    if (!isOn()) {
        reply(Error{"keeping in step is switched off in the settings"});
        return;
    }
    with_.cloud.exchange([reply = std::move(reply)](const Outcome& outcome) { reply(answerOf(outcome)); });
}

void SyncCommands::forget(const control::ForgetDevice& what, Reply reply) {
    exchange(scope_.guard([this, name = what.device, reply = std::move(reply)](const Answer& exchanged) {
        const Result<FoundDevice> device = exchanged ? deviceNamed(name) : exchanged.error();
        const Outcome may = device ? mayBeForgotten(*device) : device.error();
        if (may)
            forget(*device, reply);
        else
            reply(may.error());
    }));
}

/// The one whose identifier is that, or begins with it.
Result<FoundDevice> SyncCommands::deviceNamed(const std::string& name) const {
    std::string prefix = name;
    std::transform(prefix.begin(), prefix.end(), prefix.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    std::vector<FoundDevice> found;
    for (const FoundDevice& device : with_.cloud.status().devices) {
        if (prefix.size() >= shortestPrefix && device.device.id.toString().starts_with(prefix))
            found.push_back(device);
    }
    if (found.size() == 1)
        return found.front();
    return Error{(found.empty() ? "no computer has an identifier that begins with "
                                : "several computers have an identifier that begins with ") +
                 (name.empty() ? "\"\"" : name) + "; quillo sync status --json has them"};
}

Outcome SyncCommands::mayBeForgotten(const FoundDevice& device) const {
    if (device.device.id == thisDevice(with_.preferences).id)
        return Error{"that is this computer"};
    if (!isSilent(device, with_.clock.now()))
        return Error{"something was changed on " + device.device.name + " within a year"};
    return success();
}

/// Reads its list, keeps that, and takes it away there: each where it may wait.
void SyncCommands::forget(const FoundDevice& device, Reply reply) {
    const std::shared_ptr<Carrier> carrier = with_.makeCarrier(
        chosenSyncPlace(with_.preferences), PlaceIs::SetUp, with_.preferences, with_.passwords);
    if (!carrier) {
        reply(Error{"there is no place any more"});
        return;
    }
    std::erase_if(forgetting_, [](const auto& way) { return way.expired(); });
    forgetting_.push_back(carrier);
    const Uuid id = device.device.id;
    const auto remove = [this, carrier, id, reply](double stamp) {
        aside_.run([carrier, id, stamp] { return carrier->forget(id, stamp); },
                   scope_.guard([this, reply](const Outcome& forgotten) {
                       with_.cloud.synchronize();
                       reply(answerOf(forgotten));
                   }));
    };
    aside_.run([carrier, id] { return carrier->fileOf(id); },
               scope_.guard([this, remove, reply](const Result<DeviceFile>& file) {
                   if (!file) {
                       reply(file.error());
                       return;
                   }
                   const double stamp = file->list.stamp;
                   const std::optional<TaskList> list = TaskList::decode(file->list.items);
                   if (const Outcome may = mayBeForgotten({file->device, stamp}); !may)
                       reply(may.error());
                   else if (!list)
                       reply(Error{"its list cannot be read"});
                   else if (list->empty())
                       remove(stamp);
                   else
                       with_.store.keepAmongEarlier(*list, [remove, reply, stamp](const Outcome& kept) {
                           if (kept)
                               remove(stamp);
                           else
                               reply(kept.error());
                       });
               }));
}

SyncCommands::Chosen SyncCommands::useLookedAt(const SyncPlace& place, const std::string& keep,
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
    if (!keep.empty() && keep != "mine" && keep != "theirs")
        return Error{"cannot keep \"" + keep + "\""};
    if (both && keep.empty())
        return std::optional(BothHaveTasks{mine.size(), theirs->list.items.size()});

    with_.preferences.set(preference_keys::syncPlace, toText(place));
    if (!isOn())
        with_.preferences.set(preference_keys::cloudSync, true);
    with_.cloud.useLookedAt();
    const bool keepTheirs = both ? keep == "theirs" : differ && mine.empty();
    if (keepTheirs)
        with_.store.takeInstead(*theirs);
    else if (differ)
        with_.store.prefer(theirs->list);
    // So that the others see this computer there, whosever list it is.
    with_.store.pushToCloud();
    return std::optional<BothHaveTasks>();
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
