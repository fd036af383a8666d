#include "cli/JsonLines.h"

#include "base/Log.h"
#include "cli/LineReader.h"
#include "cli/Understanding.h"
#include "cli/WellFormed.h"
#include "cli/When.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

#include <optional>

namespace quillo::cli {

namespace {

using simdjson::dom::element;
using simdjson::dom::element_type;
using simdjson::dom::object;

/// The member of that name unless it is missing or null.
std::optional<element> member(const object& line, std::string_view name) {
    element found;
    if (line.at_key(name).get(found) != simdjson::SUCCESS || found.is_null())
        return std::nullopt;
    return found;
}

Result<std::string> text(const object& line, std::string_view name, std::string otherwise) {
    const std::optional<element> found = member(line, name);
    if (!found)
        return otherwise;
    std::string_view value;
    if (found->get(value) != simdjson::SUCCESS)
        return Error{"\"" + std::string(name) + "\" must be a text"};
    return std::string(value);
}

Result<Instant> now(const object& line, const std::string& zone, const JsonLinesDefaults& defaults) {
    const std::optional<element> found = member(line, "now");
    if (!found)
        return defaults.now();
    if (double seconds = 0; found->get(seconds) == simdjson::SUCCESS)
        return readWhen(seconds);
    if (std::string_view when; found->get(when) == simdjson::SUCCESS)
        return readWhen(when, zone);
    return Error{"\"now\" must be a time or a number of seconds"};
}

/// The answer's members behind "id", or why there is none.
Result<std::string> answer(const object& line, Places& places, const JsonLinesDefaults& defaults) {
    if (!member(line, "text"))
        return Error{"\"text\" is missing"};
    const Result<std::string> typed = text(line, "text", {});
    if (!typed)
        return typed.error();
    const Result<std::string> zone = text(line, "tz", defaults.zone);
    if (!zone)
        return zone.error();
    const Result<std::string> locale = text(line, "locale", defaults.locale);
    if (!locale)
        return locale.error();
    const auto place = places.at(*zone, *locale);
    if (!place)
        return place.error();
    const Result<Instant> reference = now(line, *zone, defaults);
    if (!reference)
        return reference.error();
    return membersOf((*place)->parser().parse(*typed, *reference), *typed, nullptr);
}

std::string errorMember(const std::string& message) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> json(buffer);
    json.String(message.data(), static_cast<rapidjson::SizeType>(message.size()));
    return std::string("\"error\":") + buffer.GetString();
}

} // namespace

bool parseJsonLines(std::FILE* input, std::FILE* output, const JsonLinesDefaults& defaults) {
    LineReader lines(input);
    simdjson::dom::parser parser;
    Places places;
    bool allRead = true;
    for (std::string line; lines.next(line);) {
        if (line.find_first_not_of(" \t\r") == std::string::npos && !lines.tooLong())
            continue;
        if (makeWellFormedJson(line))
            log("line " + std::to_string(lines.number()) + ": malformed characters read as U+FFFD");

        std::string id = "null";
        Result<std::string> members = Error{"not a JSON object"};
        object request;
        if (lines.tooLong()) {
            members = Error{"the line is too long"};
        } else if (parser.parse(line).get(request) == simdjson::SUCCESS) {
            if (element given; request.at_key("id").get(given) == simdjson::SUCCESS)
                id = simdjson::minify(given);
            members = answer(request, places, defaults);
        }
        allRead &= members.ok();
        const std::string reply =
            "{\"id\":" + id + "," + (members ? *members : errorMember(members.error().message)) + "}\n";
        std::fwrite(reply.data(), 1, reply.size(), output);
        std::fflush(output);
    }
    return allRead;
}

} // namespace quillo::cli
