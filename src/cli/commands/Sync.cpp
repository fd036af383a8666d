#include "base/DataFolder.h"
#include "base/UtcTime.h"
#include "cli/Session.h"
#include "cli/Terminal.h"
#include "cli/commands/Change.h"
#include "cli/commands/Commands.h"
#include "sync/SyncPlace.h"
#include "sync/SyncStatus.h"
#include "unicode/DateFormat.h"
#include "unicode/SystemPlace.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <variant>

namespace quillo::cli {

namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

/// Where, whether, and how.
struct Shown {
    SyncPlace place;
    bool on = true;         ///< in the settings
    std::string thisDevice; ///< its identifier; may be empty
    SyncStatus status;
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
                {}};
    if (!std::holds_alternative<NoPlace>(shown.place))
        shown.status = readSyncStatus(*folder);
    return shown;
}

void writeMember(Writer& json, const char* key, const std::optional<std::string>& text) {
    json.Key(key);
    if (text)
        json.String(text->data(), static_cast<rapidjson::SizeType>(text->size()));
    else
        json.Null();
}

void writeMember(Writer& json, const char* key, bool flag) {
    json.Key(key);
    json.Bool(flag);
}

std::string isoTime(Instant time) {
    return quillo::isoTime(floorToSecond(time));
}

void printAsJson(const Shown& shown) {
    rapidjson::StringBuffer buffer;
    Writer json(buffer);
    json.SetIndent(' ', 2);
    const auto* const folder = std::get_if<SyncedFolder>(&shown.place);
    json.StartObject();
    writeMember(json, "place", std::optional<std::string>(folder != nullptr ? "folder" : "off"));
    writeMember(json, "folder", folder != nullptr ? std::optional(folder->root.string()) : std::nullopt);
    writeMember(json, "on", shown.on);
    const auto& last = shown.status.lastInStep;
    writeMember(json, "lastInStep", last ? std::optional(isoTime(*last)) : std::nullopt);
    writeMember(json, "problem", shown.status.problem);
    json.Key("devices");
    json.StartArray();
    for (const auto& [device, stamp] : shown.status.devices) {
        const std::string id = device.id.toString();
        json.StartObject();
        writeMember(json, "device", std::optional(id));
        writeMember(json, "name", std::optional(device.name));
        writeMember(json, "app", std::optional(device.app));
        writeMember(json, "changed", std::optional(isoTime(Instant::fromUnixSeconds(stamp))));
        writeMember(json, "thisComputer", id == shown.thisDevice);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    std::printf("%s\n", buffer.GetString());
}

void printRow(std::string_view label, std::string_view text) {
    std::printf("%-16s%s\n", std::string(label).c_str(), onOneLine(text).c_str());
}

void printForPeople(const Shown& shown) {
    const unicode::DateFormat dates(unicode::systemTimeZone(), unicode::systemLocale());
    printRow("place", toText(shown.place));
    if (!shown.on)
        printRow("switched", "off in the settings");
    if (shown.status.lastInStep)
        printRow("last in step", dates.dateAndTime(*shown.status.lastInStep));
    for (const auto& [device, stamp] : shown.status.devices) {
        const bool here = device.id.toString() == shown.thisDevice;
        printRow(here ? "this computer" : "computer",
                 device.name + ", list of " + dates.dateAndTime(Instant::fromUnixSeconds(stamp)));
    }
    if (shown.status.problem)
        printRow("problem", *shown.status.problem);
}

ExitCode status(const Arguments& arguments) {
    const Result<Shown> shown = shownNow();
    if (!shown)
        return failed(shown.error());
    if (arguments.has("json"))
        printAsJson(*shown);
    else
        printForPeople(*shown);
    return ExitCode::Done;
}

ExitCode use(const Arguments& arguments) {
    std::error_code nowhere;
    const std::filesystem::path root = std::filesystem::absolute(arguments.words()[2], nowhere);
    const Result<SyncPlace> place =
        nowhere ? Error{nowhere.message()} : readSyncPlace("folder " + root.string());
    if (!place)
        return failed(place.error());
    return change(control::UseSync{toText(*place), arguments.value("keep").value_or("")},
                  [&](const Tasks&) { std::puts(onOneLine(toText(*place)).c_str()); });
}

} // namespace

std::optional<std::string> objectionToSync(const Arguments& arguments) {
    const std::string& what = arguments.words().front();
    const std::size_t count = arguments.words().size();
    const bool uses = what == "use";
    if (!uses && what != "status" && what != "off" && what != "now")
        return "cannot \"" + what + "\" keeping in step";
    if (what != "status" && arguments.has("json"))
        return "--json is for status";
    if (!uses && arguments.has("keep"))
        return "--keep is for use";
    if (!uses)
        return count > 1 ? std::optional("unexpected \"" + arguments.words()[1] + "\"") : std::nullopt;
    if (count < 3)
        return "something is missing";
    if (arguments.words()[1] != "folder")
        return "cannot use a \"" + arguments.words()[1] + "\"";
    const std::string keep = arguments.value("keep").value_or("mine");
    if (keep != "mine" && keep != "theirs")
        return "cannot keep \"" + keep + "\"";
    return std::nullopt;
}

ExitCode sync(const Arguments& arguments) {
    const std::string& what = arguments.words().front();
    if (what == "use")
        return use(arguments);
    if (what == "off")
        return change(control::UseSync{toText(NoPlace{}), ""}, [](const Tasks&) {});
    if (what == "now")
        return change(control::SyncNow{}, [](const Tasks&) {});
    return status(arguments);
}

} // namespace quillo::cli
