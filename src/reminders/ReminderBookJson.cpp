#include "reminders/ReminderBookJson.h"

#include "unicode/Text.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

#include <cmath>
#include <cstdint>
#include <utility>

namespace quillo {

namespace {

namespace dom = simdjson::dom;

bool isBetween(int value, int least, int most) {
    return least <= value && value <= most;
}

/// No calendar that is in use counts years, months or days beyond these.
bool isPlausible(const CalendarMinute& at) {
    return isBetween(at.year, -20'000, 20'000) && isBetween(at.month, 1, 13) && isBetween(at.day, 1, 32) &&
           isBetween(at.hour, 0, 23) && isBetween(at.minute, 0, 59);
}

bool isAcceptable(const ReminderRequest& request) {
    const auto fits = [](const std::string& text) {
        return text.size() <= longestReminderText && unicode::isWellFormed(text);
    };
    return !request.identifier.empty() && fits(request.identifier) && fits(request.content.title) &&
           fits(request.content.body) && isPlausible(request.at) &&
           std::isfinite(request.dueDate.secondsSince2001);
}

// Reading.

bool read(const dom::object& object, const char* key, std::string& result) {
    std::string_view text;
    if (object[key].get_string().get(text) != simdjson::SUCCESS)
        return false;
    result = text;
    return true;
}

bool read(const dom::object& object, const char* key, int& result) {
    std::int64_t number = 0;
    if (object[key].get_int64().get(number) != simdjson::SUCCESS || !std::in_range<int>(number))
        return false;
    result = static_cast<int>(number);
    return true;
}

bool read(const dom::object& object, const char* key, bool& result) {
    return object[key].get_bool().get(result) == simdjson::SUCCESS;
}

bool read(const dom::object& object, const char* key, Instant& result) {
    return object[key].get_double().get(result.secondsSince2001) == simdjson::SUCCESS;
}

bool read(const dom::object& object, const char* key, InterruptionLevel& result) {
    int number = 0;
    if (!read(object, key, number) || !isBetween(number, 0, 3))
        return false;
    result = static_cast<InterruptionLevel>(number);
    return true;
}

std::optional<BookedReminder> readReminder(const dom::element& element) {
    dom::object object;
    if (element.get_object().get(object) != simdjson::SUCCESS)
        return std::nullopt;
    BookedReminder reminder;
    ReminderRequest& request = reminder.request;
    const bool good =
        read(object, "identifier", request.identifier) && read(object, "title", request.content.title) &&
        read(object, "body", request.content.body) && read(object, "sound", request.content.sound) &&
        read(object, "interruptionLevel", request.content.interruptionLevel) &&
        read(object, "year", request.at.year) && read(object, "month", request.at.month) &&
        read(object, "day", request.at.day) && read(object, "hour", request.at.hour) &&
        read(object, "minute", request.at.minute) && read(object, "dueDate", request.dueDate) &&
        (object["delivered"].error() == simdjson::NO_SUCH_FIELD ||
         read(object, "delivered", reminder.delivered));
    if (!good || !isAcceptable(request))
        return std::nullopt;
    return reminder;
}

} // namespace

std::optional<DecodedReminderBook> decodeReminderBook(std::string_view bytes) {
    if (bytes.size() > largestReminderBook)
        return std::nullopt;
    dom::parser parser;
    dom::array array;
    if (parser.parse(bytes.data(), bytes.size()).get_array().get(array) != simdjson::SUCCESS)
        return std::nullopt;
    DecodedReminderBook book;
    for (const dom::element& element : array) {
        if (std::optional<BookedReminder> reminder = readReminder(element)) {
            std::string identifier = reminder->request.identifier;
            book.reminders.insert_or_assign(std::move(identifier), *std::move(reminder));
        } else {
            ++book.skipped;
        }
    }
    return book;
}

std::optional<std::string> encodeBookedReminder(const BookedReminder& reminder) {
    const ReminderRequest& request = reminder.request;
    if (!isAcceptable(request))
        return std::nullopt;
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    const auto writeText = [&writer](const std::string& text) {
        writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    };
    writer.StartObject();
    writer.Key("identifier");
    writeText(request.identifier);
    writer.Key("title");
    writeText(request.content.title);
    writer.Key("body");
    writeText(request.content.body);
    writer.Key("sound");
    writer.Bool(request.content.sound);
    writer.Key("interruptionLevel");
    writer.Int(static_cast<int>(request.content.interruptionLevel));
    writer.Key("year");
    writer.Int(request.at.year);
    writer.Key("month");
    writer.Int(request.at.month);
    writer.Key("day");
    writer.Int(request.at.day);
    writer.Key("hour");
    writer.Int(request.at.hour);
    writer.Key("minute");
    writer.Int(request.at.minute);
    writer.Key("dueDate");
    writer.Double(request.dueDate.secondsSince2001);
    if (reminder.delivered) {
        writer.Key("delivered");
        writer.Bool(true);
    }
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize());
}

} // namespace quillo
