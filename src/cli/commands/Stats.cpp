#include "base/UtcTime.h"
#include "cli/Session.h"
#include "cli/Terminal.h"
#include "cli/commands/Commands.h"
#include "stats/Awards.h"
#include "stats/DurationText.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace quillo::cli {

namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void writeText(Writer& json, std::string_view text) {
    json.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void writeNumber(Writer& json, const char* key, std::int64_t number) {
    json.Key(key);
    json.Int64(number);
}

void writeRecord(Writer& json, const char* key, const std::optional<SpeedRecord>& record) {
    json.Key(key);
    if (!record) {
        json.Null();
        return;
    }
    json.StartObject();
    json.Key("title");
    writeText(json, record->title);
    json.Key("durationSeconds");
    json.Double(record->durationSeconds);
    json.Key("completedAt");
    writeText(json, isoTime(floorToSecond(record->completedAt)));
    json.EndObject();
}

std::string asJson(const StatisticsSummary& summary) {
    rapidjson::StringBuffer buffer;
    Writer json(buffer);
    json.SetIndent(' ', 2);
    json.StartObject();
    json.Key("enabled");
    json.Bool(summary.enabled);
    writeNumber(json, "today", summary.today);
    writeNumber(json, "thisWeek", summary.thisWeek);
    writeNumber(json, "allTime", summary.allTime);
    writeNumber(json, "streak", summary.streak);
    writeNumber(json, "bestStreak", summary.bestStreak);
    json.Key("averageSeconds");
    if (summary.averageSeconds)
        json.Double(*summary.averageSeconds);
    else
        json.Null();
    json.Key("rank");
    writeText(json, summary.rank);
    json.Key("progress");
    writeText(json, summary.progress);
    writeRecord(json, "fastest", summary.fastest);
    writeRecord(json, "slowest", summary.slowest);
    json.Key("awards");
    json.StartArray();
    for (const Award award : summary.awards)
        writeText(json, rawValue(award));
    json.EndArray();
    json.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + '\n';
}

std::string row(std::string_view label, std::string_view value) {
    constexpr std::size_t labelColumns = 12;
    constexpr std::size_t valueColumns = 8;
    std::string line(label);
    line.resize(labelColumns, ' ');
    line.append(valueColumns - std::min(valueColumns, value.size()), ' ').append(value);
    return line + '\n';
}

std::string recordRow(std::string_view label, const SpeedRecord& record, const Terminal& terminal) {
    std::string line = row(label, durationText(record.durationSeconds));
    line.pop_back();
    line += "  " + onOneLine(record.title);
    return (terminal.columns > 0 ? fitted(line, terminal.columns) : line) + '\n';
}

std::string forPeople(const StatisticsSummary& summary, const Terminal& terminal) {
    std::string text;
    if (!summary.enabled)
        text += "Statistics are off: nothing is counted.\n\n";
    text += row("Today", std::to_string(summary.today));
    text += row("This week", std::to_string(summary.thisWeek));
    text += row("All time", std::to_string(summary.allTime));
    text += row("Streak", streakText(summary.streak));
    text += row("Best streak", streakText(summary.bestStreak));
    text += row("Avg time", summary.averageSeconds ? durationText(*summary.averageSeconds) : "-");
    text.append("\n").append(summary.rank).append("\n").append(summary.progress).append("\n\n");
    if (summary.fastest && summary.slowest)
        text += recordRow("Fastest", *summary.fastest, terminal) +
                recordRow("Slowest", *summary.slowest, terminal);
    else
        text += "No completions yet\nComplete a few tasks to set a record\n";
    text += "\nAwards\n";
    for (const Award award : allAwards) {
        const bool earned =
            std::find(summary.awards.begin(), summary.awards.end(), award) != summary.awards.end();
        const std::string line = std::string(earned ? "[x] " : "[ ] ")
                                     .append(titleOf(award))
                                     .append(": ")
                                     .append(subtitleOf(award));
        text += terminal.styled(line, earned ? Style::Plain : Style::Dim) + '\n';
    }
    return text;
}

} // namespace

ExitCode stats(const Arguments& arguments) {
    const auto session = Session::look();
    if (!session)
        return failed(session.error());
    const StatisticsSummary summary = (*session)->statsStore().summary();
    const std::string text =
        arguments.has("json") ? asJson(summary) : forPeople(summary, Terminal::ofStandardOutput());
    std::fputs(text.c_str(), stdout);
    return ExitCode::Done;
}

} // namespace quillo::cli
