#include "cli/Understanding.h"

#include "cli/Terminal.h"
#include "unicode/Text.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cmath>

namespace quillo::cli {

namespace {

const char* nameOf(ParsePath path) {
    switch (path) {
    case ParsePath::None:
        return "none";
    case ParsePath::Rules:
        return "rules";
    case ParsePath::Miss:
        return "miss";
    }
    return "";
}

/// The part of the trimmed text, which the rules saw, that a rule matched.
std::string matchedText(std::string_view text, unicode::TextRange range) {
    const std::u16string utf16 = unicode::toUtf16(text);
    return unicode::toUtf8(unicode::trim(utf16).substr(range.start, range.end - range.start));
}

} // namespace

std::string dueAsJson(const std::optional<Instant>& due) {
    if (!due)
        return "null";
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> json(buffer);
    if (const double seconds = due->unixSeconds(); seconds == std::floor(seconds))
        json.Int64(static_cast<std::int64_t>(seconds));
    else
        json.Double(seconds);
    return buffer.GetString();
}

std::string membersOf(const Parse& parse, std::string_view text, const Trace* trace) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> json(buffer);
    const auto string = [&json](std::string_view value) {
        json.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    };
    json.StartObject();
    json.Key("hint");
    json.Bool(parse.hint);
    json.Key("title");
    string(parse.task.title);
    json.Key("due");
    const std::string due = dueAsJson(parse.task.dueDate);
    json.RawValue(due.data(), due.size(), rapidjson::kNumberType);
    json.Key("interpretation");
    if (parse.task.interpretation)
        string(*parse.task.interpretation);
    else
        json.Null();
    json.Key("path");
    json.String(nameOf(parse.path));
    if (trace) {
        json.Key("trace");
        json.StartArray();
        for (const TraceEntry& entry : *trace) {
            json.StartObject();
            json.Key("family");
            string(entry.family);
            json.Key("rule");
            string(entry.rule);
            json.Key("start");
            json.Uint64(entry.range.start);
            json.Key("end");
            json.Uint64(entry.range.end);
            json.Key("text");
            string(matchedText(text, entry.range));
            json.EndObject();
        }
        json.EndArray();
    }
    json.EndObject();
    return std::string(buffer.GetString() + 1, buffer.GetSize() - 2);
}

std::string described(const Parse& parse, std::string_view text, const Trace* trace, const Place& place) {
    std::string lines = "title           " + onOneLine(parse.task.title) + "\n";
    if (parse.task.dueDate)
        lines += "due             " + place.format().dateAndTime(*parse.task.dueDate) + "\n";
    if (parse.task.interpretation)
        lines += "interpretation  " + *parse.task.interpretation + "\n";
    lines += std::string("path            ") + nameOf(parse.path) + "\n";
    if (trace) {
        for (const TraceEntry& entry : *trace) {
            lines += "matched         \"" + onOneLine(matchedText(text, entry.range)) + "\" at " +
                     std::to_string(entry.range.start) + "-" + std::to_string(entry.range.end) + ": " +
                     std::string(entry.family) + ", " + std::string(entry.rule) + "\n";
        }
    }
    return lines;
}

} // namespace quillo::cli
