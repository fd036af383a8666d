#include "cli/Session.h"

#include "base/DataFolder.h"
#include "cli/WorkingMemory.h"
#include "languagemodel/PreferredLanguageModel.h"
#include "sync/KeyringLibrary.h"
#include "sync/MakeCarrier.h"
#include "unicode/SystemPlace.h"

#include <utility>
#include <variant>
#include <vector>

namespace quillo::cli {

namespace {

/// How long a command waits for what other computers have left: a folder on a disk takes far less.
constexpr std::chrono::milliseconds patienceForNews{250};

/// Commands wait for no server, but for those that are about keeping in step.
bool isWithinReach(const SyncPlace& place) {
    return std::holds_alternative<SyncedFolder>(place);
}

std::unique_ptr<Carrier> carrierAtStart(Preferences& preferences) {
    const SyncPlace place = chosenSyncPlace(preferences);
    return isWithinReach(place) ? makeCarrier(place, PlaceIs::SetUp, preferences) : nullptr;
}

} // namespace

Result<std::unique_ptr<Session>> Session::look() {
    const auto folder = dataFolder();
    if (!folder)
        return folder.error();
    auto session = open(*folder, std::nullopt);
    if (session && (*session)->syncCommands_.isWanted() &&
        isWithinReach(chosenSyncPlace((*session)->preferences()))) {
        // Who holds the list takes over what comes by himself.
        auto lock = PreferencesLock::tryAcquire(*folder);
        auto inStep = lock && *lock ? change(*folder, *std::move(*lock)) : std::move(session);
        if (inStep && (!(*inStep)->lock_ || (*inStep)->commit()))
            return inStep;
        return open(*folder, std::nullopt);
    }
    return session;
}

Result<std::unique_ptr<Session>> Session::change(const std::filesystem::path& folder, PreferencesLock lock) {
    auto session = open(folder, std::move(lock));
    if (session) {
        if (const Outcome pulled = (*session)->takeNews(); !pulled)
            return pulled.error();
    }
    return session;
}

Result<std::unique_ptr<Session>> Session::open(const std::filesystem::path& folder,
                                               std::optional<PreferencesLock> lock) {
    // The list is read into a buffer, and SQLite holds the pages of the new one.
    std::error_code noFile;
    if (const auto size = std::filesystem::file_size(folder / "preferences.sqlite", noFile); !noFile)
        readyMemory(size * 3 / 2);
    auto preferences = SqlitePreferences::open(folder, lock ? SqlitePreferences::Access::ReadWrite
                                                            : SqlitePreferences::Access::ReadOnly);
    if (!preferences)
        return preferences.error();
    auto calendar = unicode::CivilCalendar::create(unicode::systemTimeZone(), unicode::systemLocale());
    if (!calendar)
        return Error{"unknown time zone \"" + unicode::systemTimeZone() + "\""};
    (*preferences)->writeOnFlushOnly();
    std::unique_ptr<Session> session(
        new Session(folder, std::move(lock), std::move(*preferences), std::move(*calendar)));
    // A list that could not be read because of the disk is not an empty one.
    if (const Outcome read = session->preferences_->flush(); !read)
        return read.error();
    return session;
}

Session::Session(const std::filesystem::path& folder, std::optional<PreferencesLock> lock,
                 std::unique_ptr<SqlitePreferences> preferences, unicode::CivilCalendar calendar)
    : lock_(std::move(lock)), preferences_(std::move(preferences)),
      // Who adds a task is not asked for the password of his keyring.
      passwords_(std::make_shared<KeptPasswords>(loadKeyring, Keyring::Ask::No)),
      cloud_(folder, mainExecutor_, clock_, lock_ ? carrierAtStart(*preferences_) : nullptr),
      backups_(folder, clock_), calendar_(std::move(calendar)),
      services_(Surroundings{*preferences_, cloudWithNews(), clock_, calendar_, mainExecutor_, backups_}),
      syncCommands_(SyncCommandsDependencies{*preferences_, cloud_, services_.todoStore(), clock_,
                                             mainExecutor_, passwords_}) {}

/// Nothing is to leave this computer that is not on its disk.
CloudStore& Session::cloudWithNews() {
    cloud_.holdBack(true);
    cloud_.await(patienceForNews);
    return cloud_;
}

control::Answer Session::answer(const control::Request& request, const std::optional<UnderstoodText>& text) {
    std::optional<control::Answer> answer;
    apply(request, text, [&](const control::Answer& given) { answer = given; });
    while (!answer) { // It waits for the disk.
        mainExecutor_.wait();
        mainExecutor_.run();
    }
    if (*answer) {
        if (const Outcome pulled = takeNews(); !pulled)
            return pulled.error();
        if (const Outcome outcome = commit(); !outcome)
            return outcome.error();
    }
    return *std::move(answer);
}

void Session::apply(const control::Request& request, const std::optional<UnderstoodText>& text,
                    const SyncCommands::Reply& reply) {
    if (const auto* model = std::get_if<control::UseModel>(&request.command)) {
        const Outcome kept = preferLanguageModel(*preferences_, model->choice);
        reply(kept ? control::Answer(std::vector<control::NumberedItem>{}) : control::Answer(kept.error()));
    } else if (const auto* sync = std::get_if<control::UseSync>(&request.command)) {
        passwords_->mayAsk();
        syncCommands_.use(*sync, reply);
    } else if (const auto* now = std::get_if<control::SyncNow>(&request.command)) {
        if (const Outcome reached = reachPlace(); !reached)
            return reply(reached.error());
        syncCommands_.now(*now, reply);
    } else if (const auto* forget = std::get_if<control::ForgetDevice>(&request.command)) {
        if (const Outcome reached = reachPlace(); !reached)
            return reply(reached.error());
        syncCommands_.forget(*forget, reply);
    } else if (text) {
        services_.commands().answer(request, *text, reply);
    } else {
        services_.commands().answer(request, reply);
    }
}

/// Who asks for it waits for the network, too, and may be asked to unlock his keyring.
Outcome Session::reachPlace() {
    passwords_->mayAsk();
    if (!cloud_.hasPlace()) {
        cloud_.use(makeCarrier(chosenSyncPlace(*preferences_), PlaceIs::SetUp, *preferences_, passwords_));
        services_.todoStore().pushToCloud();
        if (Outcome drained = services_.todoStore().drain(); !drained)
            return drained;
    }
    // Nothing has been changed; but by what name this computer leaves its list may be new.
    const Outcome kept = preferences_->flush();
    if (kept)
        cloud_.holdBack(false);
    return kept;
}

/// What came meanwhile is taken over, too.
Outcome Session::takeNews() {
    const Outcome pulled = services_.todoStore().drain();
    mainExecutor_.run();
    return pulled;
}

Outcome Session::commit() {
    Outcome outcome = services_.drain();
    if (outcome)
        outcome = preferences_->flush();
    if (!outcome)
        preferences_->discard(); // Nobody shall find later what was said not to be there.
    else
        cloud_.holdBack(false);
    cloud_.synchronize();
    return outcome;
}

} // namespace quillo::cli
