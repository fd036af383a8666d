#include "base/DataFolder.h"
#include "cli/PasswordPrompt.h"
#include "cli/Terminal.h"
#include "cli/commands/Change.h"
#include "cli/commands/Commands.h"
#include "cli/commands/SyncStatus.h"
#include "control/Client.h"
#include "sqlite/SqlitePreferences.h"
#include "sync/KeptPasswords.h"
#include "sync/KeyringLibrary.h"
#include "sync/SyncPlace.h"

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <variant>
#include <vector>

namespace quillo::cli {

namespace {

/// The place that the words behind "use" name.
Result<SyncPlace> placeOf(const Arguments& arguments) {
    const std::string& name = arguments.words()[2];
    if (arguments.words()[1] == "webdav")
        return readSyncPlace("webdav " + name + " " + arguments.value("user").value_or(""));
    std::error_code nowhere;
    const std::filesystem::path root = std::filesystem::absolute(name, nowhere);
    return nowhere ? Error{nowhere.message()} : readSyncPlace("folder " + root.string());
}

std::string questionFor(const WebDavFolder& place) {
    return "Password for " + place.user + " at " + place.url;
}

/// The password of a place that wants one: from the terminal, or with --password-stdin from standard input.
Result<std::string> passwordFor(const WebDavFolder& place, const Arguments& arguments) {
    if (arguments.has("password-stdin"))
        return passwordFromInput();
    if (canAskForPassword())
        return askForPassword(questionFor(place));
    return Error{"there is no terminal to ask for the password on; --password-stdin reads it from standard "
                 "input"};
}

ExitCode use(const Arguments& arguments) {
    const Result<SyncPlace> place = placeOf(arguments);
    if (!place)
        return failed(place.error());
    control::UseSync what{toText(*place), arguments.value("keep").value_or("")};
    if (const auto* const server = std::get_if<WebDavFolder>(&*place);
        server != nullptr && !server->user.empty()) {
        Result<std::string> password = passwordFor(*server, arguments);
        if (!password)
            return failed(password.error());
        what.password = *std::move(password);
    }
    return change(std::move(what), [&](const Tasks&) {
        std::puts(onOneLine(toText(*place)).c_str());
        printWhereThePasswordIs(*place);
    });
}

/// The server whose password nobody knows but the user: no program runs that was told it, and it is in no
/// keyring.
std::optional<WebDavFolder> serverWithUnknownPassword() {
    const auto folder = dataFolder();
    if (!folder || control::isServed(*folder))
        return std::nullopt;
    const auto preferences = SqlitePreferences::open(*folder, SqlitePreferences::Access::ReadOnly);
    const SyncPlace place = preferences ? chosenSyncPlace(**preferences) : NoPlace{};
    const auto* const server = std::get_if<WebDavFolder>(&place);
    if (server == nullptr || server->user.empty() || KeptPasswords(loadKeyring).isInKeyring(*server))
        return std::nullopt;
    return *server;
}

ExitCode now(const Arguments& arguments) {
    std::optional<std::string> password;
    if (arguments.has("password-stdin")) {
        Result<std::string> given = passwordFromInput();
        if (!given)
            return failed(given.error());
        password = *std::move(given);
    } else if (const auto server = serverWithUnknownPassword()) {
        Result<std::string> given = passwordFor(*server, arguments);
        if (!given)
            return failed(given.error());
        password = *std::move(given);
    }
    return change(control::SyncNow{std::move(password)}, [](const Tasks&) {});
}

/// What speaks against the words behind "use". What is there repeats no address: there may be a password in
/// it.
std::optional<std::string> objectionToUse(const Arguments& arguments) {
    const std::vector<std::string>& words = arguments.words();
    if (words.size() < 3)
        return "something is missing";
    const bool server = words[1] == "webdav";
    if (!server && words[1] != "folder")
        return "a place is a folder or webdav";
    if (words.size() > 3)
        return "there is too much behind the place";
    if (!server && arguments.has("user"))
        return "--user is for webdav";
    if (arguments.has("password-stdin") && arguments.value("user").value_or("").empty())
        return "--password-stdin needs --user";
    if (server) {
        if (const Result<SyncPlace> place = placeOf(arguments); !place)
            return place.error().message;
    }
    const std::string keep = arguments.value("keep").value_or("mine");
    if (keep != "mine" && keep != "theirs")
        return "cannot keep \"" + keep + "\"";
    return std::nullopt;
}

} // namespace

std::optional<std::string> objectionToSync(const Arguments& arguments) {
    const std::string& what = arguments.words().front();
    const std::size_t count = arguments.words().size();
    if (what != "use" && what != "status" && what != "off" && what != "now" && what != "forget")
        return "it is status, use, off, now or forget";
    if (what != "status" && arguments.has("json"))
        return "--json is for status";
    if (what != "use" && (arguments.has("keep") || arguments.has("user")))
        return std::string(arguments.has("keep") ? "--keep" : "--user") + " is for use";
    if (what != "use" && what != "now" && arguments.has("password-stdin"))
        return "--password-stdin is for use and now";
    if (what == "use")
        return objectionToUse(arguments);
    if (what == "forget" && count < 2)
        return "something is missing";
    const std::size_t most = what == "forget" ? 2 : 1;
    return count > most ? std::optional("unexpected \"" + arguments.words()[most] + "\"") : std::nullopt;
}

ExitCode sync(const Arguments& arguments) {
    const std::string& what = arguments.words().front();
    if (what == "use")
        return use(arguments);
    if (what == "off")
        return change(control::UseSync{toText(NoPlace{}), ""}, [](const Tasks&) {});
    if (what == "now")
        return now(arguments);
    if (what == "forget")
        return change(control::ForgetDevice{arguments.words()[1]}, [](const Tasks&) {});
    return showSyncStatus(arguments.has("json"));
}

} // namespace quillo::cli
