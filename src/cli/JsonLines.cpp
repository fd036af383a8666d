#include "cli/JsonLines.h"

#include "base/Log.h"
#include "cli/JsonRequest.h"
#include "cli/LineReader.h"
#include "cli/Understanding.h"
#include "cli/WellFormed.h"
#include "cli/When.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace quillo::cli {

namespace {

Result<std::string> textOf(const JsonMember& member, const char* name, const std::string& otherwise) {
    switch (member.kind) {
    case JsonMember::Kind::Absent:
        return otherwise;
    case JsonMember::Kind::Text:
        return member.text;
    case JsonMember::Kind::Number:
    case JsonMember::Kind::Other:
        break;
    }
    return Error{std::string("\"") + name + "\" must be a text"};
}

Result<Instant> nowOf(const JsonMember& member, const std::string& zone, const JsonLinesDefaults& defaults) {
    switch (member.kind) {
    case JsonMember::Kind::Absent:
        return defaults.now();
    case JsonMember::Kind::Text:
    case JsonMember::Kind::Number:
        return readWhen(member.text, zone);
    case JsonMember::Kind::Other:
        break;
    }
    return Error{"\"now\" must be a time or a number of seconds"};
}

/// The answer's members behind "id", or why there is none.
Result<std::string> answer(const JsonRequest& request, Places& places, const JsonLinesDefaults& defaults) {
    if (request.text.kind == JsonMember::Kind::Absent)
        return Error{"\"text\" is missing"};
    const Result<std::string> typed = textOf(request.text, "text", {});
    if (!typed)
        return typed.error();
    const Result<std::string> zone = textOf(request.zone, "tz", defaults.zone);
    if (!zone)
        return zone.error();
    const Result<std::string> locale = textOf(request.locale, "locale", defaults.locale);
    if (!locale)
        return locale.error();
    const auto place = places.at(*zone, locale->empty() ? defaults.locale : *locale);
    if (!place)
        return place.error();
    const Result<Instant> now = nowOf(request.now, *zone, defaults);
    if (!now)
        return now.error();
    return membersOf((*place)->parser().parse(*typed, *now), *typed, nullptr);
}

std::string errorMember(const std::string& message) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> json(buffer);
    json.String(message.data(), static_cast<rapidjson::SizeType>(message.size()));
    return std::string("\"error\":") + buffer.GetString();
}

} // namespace

Result<bool> parseJsonLines(std::FILE* input, std::FILE* output, const JsonLinesDefaults& defaults) {
    LineReader lines(input);
    Places places;
    bool allRead = true;
    for (std::string line; lines.next(line);) {
        if (line.find_first_not_of(" \t\r") == std::string::npos && !lines.tooLong())
            continue;
        if (makeWellFormedJson(line))
            log("line " + std::to_string(lines.number()) + ": malformed characters read as U+FFFD");

        std::string id = "null";
        Result<std::string> members = Error{"not a JSON object"};
        if (lines.tooLong()) {
            members = Error{"the line is too long"};
        } else if (const auto request = readJsonRequest(line)) {
            id = request->id;
            members = answer(*request, places, defaults);
        }
        allRead &= members.ok();
        const std::string reply =
            "{\"id\":" + id + "," + (members ? *members : errorMember(members.error().message)) + "}\n";
        std::fwrite(reply.data(), 1, reply.size(), output);
        std::fflush(output);
    }
    if (std::ferror(input) != 0)
        return Error{"standard input cannot be read"};
    return allRead;
}

} // namespace quillo::cli
