#include "cli/Understanding.h"

#include "cli/Terminal.h"
#include "unicode/Text.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cmath>
#include <cstdio>

namespace quillo::cli {

namespace {

const char* nameOf(ParsePath path) {
    switch (path) {
    case ParsePath::None:
        return "none";
    case ParsePath::Rules:
        return "rules";
    case ParsePath::Model:
        return "model";
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

using JsonWriter = rapidjson::Writer<rapidjson::StringBuffer>;

void write(JsonWriter& json, std::string_view text) {
    json.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

/// By the names that a model is asked for.
void write(JsonWriter& json, const GeneratedTodo& todo) {
    json.StartObject();
    json.Key("kind");
    write(json, rawValueOf(todo.kind));
    json.Key("amount");
    json.Int64(todo.amount);
    json.Key("month");
    json.Int64(todo.month);
    json.Key("day");
    json.Int64(todo.day);
    json.Key("hasTime");
    json.Bool(todo.hasTime);
    json.Key("hour");
    json.Int64(todo.hour);
    json.Key("minute");
    json.Int64(todo.minute);
    json.Key("title");
    write(json, todo.title);
    json.EndObject();
}

/// The same for people.
std::string described(const Classification& classification) {
    const GeneratedTodo& todo = classification.todo;
    std::string lines = "classification  kind " + std::string(rawValueOf(todo.kind)) + ", amount " +
                        std::to_string(todo.amount) + ", month " + std::to_string(todo.month) + ", day " +
                        std::to_string(todo.day) + ", hasTime " + (todo.hasTime ? "true" : "false") +
                        ", hour " + std::to_string(todo.hour) + ", minute " + std::to_string(todo.minute) +
                        ", title \"" + onOneLine(todo.title) + "\"\n";
    if (classification.score) {
        char score[32];
        std::snprintf(score, sizeof score, "%g", *classification.score);
        lines += std::string("score           ") + score + "\n";
    }
    return lines;
}

} // namespace

std::string dueAsJson(const std::optional<Instant>& due) {
    if (!due)
        return "null";
    rapidjson::StringBuffer buffer;
    JsonWriter json(buffer);
    if (const double seconds = due->unixSeconds(); seconds == std::floor(seconds))
        json.Int64(static_cast<std::int64_t>(seconds));
    else
        json.Double(seconds);
    return buffer.GetString();
}

std::string membersOf(const Parse& parse, std::string_view text, const Trace* trace) {
    rapidjson::StringBuffer buffer;
    JsonWriter json(buffer);
    json.StartObject();
    json.Key("hint");
    json.Bool(parse.hint);
    json.Key("title");
    write(json, parse.task.title);
    json.Key("due");
    const std::string due = dueAsJson(parse.task.dueDate);
    json.RawValue(due.data(), due.size(), rapidjson::kNumberType);
    json.Key("interpretation");
    if (parse.task.interpretation)
        write(json, *parse.task.interpretation);
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
            write(json, entry.family);
            json.Key("rule");
            write(json, entry.rule);
            json.Key("start");
            json.Uint64(entry.range.start);
            json.Key("end");
            json.Uint64(entry.range.end);
            json.Key("text");
            write(json, matchedText(text, entry.range));
            json.EndObject();
        }
        json.EndArray();
    }
    if (trace && parse.classification) {
        json.Key("classification");
        write(json, parse.classification->todo);
        if (parse.classification->score) {
            json.Key("score");
            json.Double(*parse.classification->score);
        }
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
        if (parse.classification)
            lines += described(*parse.classification);
    }
    return lines;
}

} // namespace quillo::cli
