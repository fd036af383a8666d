#include "cli/Session.h"

#include "base/DataFolder.h"
#include "cli/WorkingMemory.h"
#include "languagemodel/PreferredLanguageModel.h"
#include "unicode/SystemPlace.h"

#include <utility>
#include <variant>
#include <vector>

namespace quillo::cli {

Result<std::unique_ptr<Session>> Session::look() {
    const auto folder = dataFolder();
    return folder ? open(*folder, std::nullopt) : Result<std::unique_ptr<Session>>(folder.error());
}

Result<std::unique_ptr<Session>> Session::change(const std::filesystem::path& folder, PreferencesLock lock) {
    auto session = open(folder, std::move(lock));
    if (session) {
        if (const Outcome pulled = (*session)->services_.todoStore().drain(); !pulled)
            return pulled.error();
        (*session)->mainExecutor_.run();
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
    : lock_(std::move(lock)), preferences_(std::move(preferences)), backups_(folder, clock_),
      calendar_(std::move(calendar)),
      services_(Surroundings{*preferences_, cloud_, clock_, calendar_, mainExecutor_, backups_}) {}

control::Answer Session::answer(const control::Request& request, const std::optional<UnderstoodText>& text) {
    std::optional<control::Answer> answer;
    const auto reply = [&](const control::Answer& given) { answer = given; };
    if (const auto* use = std::get_if<control::UseModel>(&request.command)) {
        const Outcome kept = preferLanguageModel(*preferences_, use->choice);
        answer = kept ? control::Answer(std::vector<control::NumberedItem>{}) : control::Answer(kept.error());
    } else if (text) {
        services_.commands().answer(request, *text, reply);
    } else {
        services_.commands().answer(request, reply);
    }
    while (!answer) { // It waits for the disk.
        mainExecutor_.wait();
        mainExecutor_.run();
    }
    if (*answer) {
        if (const Outcome outcome = commit(); !outcome)
            return outcome.error();
    }
    return *std::move(answer);
}

Outcome Session::commit() {
    Outcome outcome = services_.drain();
    if (outcome)
        outcome = preferences_->flush();
    if (!outcome)
        preferences_->discard(); // Nobody shall find later what was said not to be there.
    return outcome;
}

} // namespace quillo::cli
