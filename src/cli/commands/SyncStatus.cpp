#include "cli/commands/SyncStatus.h"

#include "base/Clock.h"
#include "base/DataFolder.h"
#include "base/UtcTime.h"
#include "cli/PrettyJson.h"
#include "cli/Session.h"
#include "cli/Terminal.h"
#include "sync/KeptPasswords.h"
#include "sync/KeyringLibrary.h"
#include "sync/SyncStatus.h"
#include "unicode/DateFormat.h"
#include "unicode/SystemPlace.h"

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace quillo::cli {

namespace {

/// Where, whether, and how.
struct Shown {
    SyncPlace place;
    bool on = true;                                    ///< in the settings
    std::string thisDevice;                            ///< its identifier; may be empty
    std::optional<bool> passwordIsKept = std::nullopt; ///< in the keyring; absent where none is wanted
    SyncStatus status;
};

/// Whether the keyring has the place's password; absent where it wants none.
std::optional<bool> isKept(const SyncPlace& place) {
    const auto* const server = std::get_if<WebDavFolder>(&place);
    if (server == nullptr || server->user.empty())
        return std::nullopt;
    return KeptPasswords(loadKeyring).isInKeyring(*server);
}

/// Whether what the device has left may be taken away.
bool mayBeForgotten(const FoundDevice& found, const std::string& thisDevice) {
    return found.device.id.toString() != thisDevice && isSilent(found, SystemClock().now());
}

/// What the kind of place is called.
struct KindOf {
    const char* operator()(const NoPlace&) const { return "off"; }
    const char* operator()(const SyncedFolder&) const { return "folder"; }
    const char* operator()(const WebDavFolder&) const { return "webdav"; }
};

Result<Shown> shownNow() {
    const auto folder = dataFolder();
    if (!folder)
        return folder.error();
    const auto session = Session::look();
    if (!session)
        return session.error();
    const Preferences& preferences = (*session)->preferences();
    Shown shown{chosenSyncPlace(preferences),
                preferences.boolean(preference_keys::cloudSync).value_or(true),
                preferences.text(preference_keys::syncDevice).value_or("").substr(0, 36),
                isKept(chosenSyncPlace(preferences)),
                {}};
    if (!std::holds_alternative<NoPlace>(shown.place))
        shown.status = readSyncStatus(*folder);
    return shown;
}

std::string isoTime(Instant time) {
    return quillo::isoTime(floorToSecond(time));
}

void printAsJson(const Shown& shown) {
    rapidjson::StringBuffer buffer;
    PrettyWriter json(buffer);
    json.SetIndent(' ', 2);
    const auto* const folder = std::get_if<SyncedFolder>(&shown.place);
    const auto* const server = std::get_if<WebDavFolder>(&shown.place);
    json.StartObject();
    writeMember(json, "place", std::optional<std::string>(std::visit(KindOf{}, shown.place)));
    writeMember(json, "folder", folder != nullptr ? std::optional(folder->root.string()) : std::nullopt);
    writeMember(json, "url", server != nullptr ? std::optional(server->url) : std::nullopt);
    writeMember(json, "user",
                server != nullptr && !server->user.empty() ? std::optional(server->user) : std::nullopt);
    json.Key("passwordKept");
    if (shown.passwordIsKept)
        json.Bool(*shown.passwordIsKept);
    else
        json.Null();
    writeMember(json, "on", shown.on);
    const auto& last = shown.status.lastInStep;
    writeMember(json, "lastInStep", last ? std::optional(isoTime(*last)) : std::nullopt);
    writeMember(json, "problem", shown.status.problem);
    json.Key("devices");
    json.StartArray();
    for (const FoundDevice& found : shown.status.devices) {
        const auto& [device, stamp] = found;
        const std::string id = device.id.toString();
        json.StartObject();
        writeMember(json, "device", std::optional(id));
        writeMember(json, "name", std::optional(device.name));
        writeMember(json, "app", std::optional(device.app));
        writeMember(json, "changed", std::optional(isoTime(Instant::fromUnixSeconds(stamp))));
        writeMember(json, "thisComputer", id == shown.thisDevice);
        writeMember(json, "forgettable", mayBeForgotten(found, shown.thisDevice));
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    std::printf("%s\n", buffer.GetString());
}

void printRow(std::string_view label, std::string_view text) {
    std::printf("%-16s%s\n", std::string(label).c_str(), onOneLine(text).c_str());
}

void printPassword(std::optional<bool> isKept) {
    if (isKept)
        printRow("password", *isKept ? "in the keyring" : "to be given at each start: no keyring has it");
}

void printForPeople(const Shown& shown) {
    const unicode::DateFormat dates(unicode::systemTimeZone(), unicode::systemLocale());
    const auto* const server = std::get_if<WebDavFolder>(&shown.place);
    printRow("place", server != nullptr ? "webdav " + server->url : toText(shown.place));
    if (server != nullptr && !server->user.empty())
        printRow("user", server->user);
    printPassword(shown.passwordIsKept);
    if (!shown.on)
        printRow("switched", "off in the settings");
    if (shown.status.lastInStep)
        printRow("last in step", dates.dateAndTime(*shown.status.lastInStep));
    for (const FoundDevice& found : shown.status.devices) {
        const auto& [device, stamp] = found;
        const std::string id = device.id.toString();
        printRow(id == shown.thisDevice ? "this computer" : "computer",
                 device.name + ", list of " + dates.dateAndTime(Instant::fromUnixSeconds(stamp)) +
                     (mayBeForgotten(found, shown.thisDevice)
                          ? "; quillo sync forget " + id.substr(0, 8) + " takes it away"
                          : ""));
    }
    if (shown.status.problem)
        printRow("problem", *shown.status.problem);
}

} // namespace

ExitCode showSyncStatus(bool json) {
    const Result<Shown> shown = shownNow();
    if (!shown)
        return failed(shown.error());
    if (json)
        printAsJson(*shown);
    else
        printForPeople(*shown);
    return ExitCode::Done;
}

void printWhereThePasswordIs(const SyncPlace& place) {
    printPassword(isKept(place));
}

} // namespace quillo::cli
