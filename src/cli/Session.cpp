#include "cli/Session.h"

#include "base/DataFolder.h"
#include "cli/WorkingMemory.h"
#include "unicode/SystemPlace.h"

#include <utility>

namespace quillo::cli {

Result<std::unique_ptr<Session>> Session::open(Purpose purpose) {
    constexpr std::chrono::milliseconds patience{2000};
    const auto folder = dataFolder();
    if (!folder)
        return folder.error();

    std::optional<PreferencesLock> lock;
    if (purpose == Purpose::Change) {
        auto acquired = PreferencesLock::acquire(*folder, patience);
        if (!acquired)
            return acquired.error();
        lock = std::move(*acquired);
    }
    // The list is read into one buffer, encoded into another and copied once more by SQLite.
    std::error_code noFile;
    if (const auto size = std::filesystem::file_size(*folder / "preferences.sqlite", noFile); !noFile)
        readyMemory(size * 7 / 2);
    auto preferences =
        SqlitePreferences::open(*folder, purpose == Purpose::Change ? SqlitePreferences::Access::ReadWrite
                                                                    : SqlitePreferences::Access::ReadOnly);
    if (!preferences)
        return preferences.error();
    auto calendar = unicode::CivilCalendar::create(unicode::systemTimeZone(), unicode::systemLocale());
    if (!calendar)
        return Error{"unknown time zone \"" + unicode::systemTimeZone() + "\""};
    std::unique_ptr<Session> session(
        new Session(*folder, std::move(lock), std::move(*preferences), std::move(*calendar)));
    // A list that could not be read because of the disk is not an empty one.
    if (const Outcome read = session->preferences_->flush(); !read)
        return read.error();
    return session;
}

Session::Session(std::filesystem::path folder, std::optional<PreferencesLock> lock,
                 std::unique_ptr<SqlitePreferences> preferences, unicode::CivilCalendar calendar)
    : lock_(std::move(lock)), preferences_(std::move(preferences)), backups_(std::move(folder), clock_),
      calendar_(std::move(calendar)), dates_(calendar_.zone(), calendar_.locale()),
      parser_(calendar_, dates_),
      store_(TodoStoreDependencies{*preferences_, cloud_, reminders_, clock_, notifications_, &backups_}),
      addTask_(parser_, clock_, store_), commands_(addTask_, store_) {}

Outcome Session::commit() {
    Outcome outcome = store_.drain();
    if (outcome)
        outcome = preferences_->flush();
    if (!outcome)
        preferences_->discard(); // Nobody shall find later what was said not to be there.
    return outcome;
}

} // namespace quillo::cli
