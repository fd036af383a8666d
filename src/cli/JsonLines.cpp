#include "cli/JsonLines.h"

#include "base/Log.h"
#include "cli/LineReader.h"
#include "cli/WellFormed.h"
#include "cli/When.h"

namespace quillo::cli {

namespace {

Result<Instant> nowOf(const JsonMember& member, const std::string& zone, const Circumstances& circumstances) {
    switch (member.kind) {
    case JsonMember::Kind::Absent:
        return circumstances.now();
    case JsonMember::Kind::Text:
    case JsonMember::Kind::Number:
        return readWhen(member.text, zone);
    case JsonMember::Kind::Flag:
    case JsonMember::Kind::Array:
    case JsonMember::Kind::Object:
        break;
    }
    return Error{"\"now\" must be a time or a number of seconds"};
}

/// The answer's members behind "id", or why there is none.
Result<std::string> answer(const JsonMembers& line, Places& places, const Circumstances& circumstances,
                           const JsonQuestion& question) {
    const JsonMember& asked = line.at(question.member);
    if (asked.kind == JsonMember::Kind::Absent)
        return Error{"\"" + std::string(question.member) + "\" is missing"};
    const unicode::CivilCalendar& usual = circumstances.place->calendar();
    const Result<std::string> zone = textOf(line.at("tz"), "tz", usual.zone());
    if (!zone)
        return zone.error();
    const Result<std::string> locale = textOf(line.at("locale"), "locale", usual.locale());
    if (!locale)
        return locale.error();
    const auto place = places.at(*zone, locale->empty() ? usual.locale() : *locale);
    if (!place)
        return place.error();
    const Result<Instant> now = nowOf(line.at("now"), *zone, circumstances);
    if (!now)
        return now.error();
    return question.answer(asked, *now, **place);
}

} // namespace

Result<bool> answerJsonLines(std::FILE* input, std::FILE* output, const Circumstances& circumstances,
                             Places& places, const JsonQuestion& question) {
    LineReader lines(input);
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
        } else if (const auto read = readJsonMembers(line, {"id", "now", "tz", "locale", question.member})) {
            id = toJson(read->at("id"));
            members = answer(*read, places, circumstances, question);
        }
        allRead &= members.ok();
        const std::string reply = "{\"id\":" + id + "," +
                                  (members ? *members : "\"error\":" + toJson(members.error().message)) +
                                  "}\n";
        std::fwrite(reply.data(), 1, reply.size(), output);
        std::fflush(output);
    }
    if (std::ferror(input) != 0)
        return Error{"standard input cannot be read"};
    return allRead;
}

} // namespace quillo::cli
