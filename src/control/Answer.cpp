#include "control/Answer.h"

#include "model/TodoItemJson.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

namespace quillo::control {

namespace {

namespace ondemand = simdjson::ondemand;

const Error noAnswer{
    "the running Quillo gave an answer that cannot be read; perhaps it is of another version"};

std::string errorLine(const Error& error) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    writer.StartObject();
    writer.Key("error");
    std::string message = error.message;
    if (!simdjson::validate_utf8(message)) // A folder's name may be anything.
        std::replace_if(
            message.begin(), message.end(), [](char c) { return (c & 0x80) != 0; }, '?');
    writer.String(message.data(), static_cast<rapidjson::SizeType>(message.size()));
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + '\n';
}

std::optional<std::vector<std::size_t>> readNumbers(ondemand::value& value) {
    ondemand::array array;
    if (value.get_array().get(array) != simdjson::SUCCESS)
        return std::nullopt;
    std::vector<std::size_t> numbers;
    for (auto element : array) {
        std::uint64_t number = 0;
        if (element.get_uint64().get(number) != simdjson::SUCCESS)
            return std::nullopt;
        numbers.push_back(number);
    }
    return numbers;
}

std::optional<std::vector<TodoItem>> readTasks(ondemand::value& value) {
    ondemand::array array;
    std::string_view stored;
    if (value.get_array().get(array) != simdjson::SUCCESS ||
        array.raw_json().get(stored) != simdjson::SUCCESS)
        return std::nullopt;
    return decodeStoredItems(stored);
}

} // namespace

std::string encode(const Answer& answer) {
    if (!answer)
        return errorLine(answer.error());
    std::string numbers;
    StoredItemsWriter tasks;
    for (const NumberedItem& task : *answer) {
        numbers += (numbers.empty() ? "" : ",") + std::to_string(task.number);
        tasks.add(task.item);
    }
    const std::optional<std::string> array = tasks.finish();
    if (!array)
        return errorLine({"the answer is too long"});
    return "{\"numbers\":[" + numbers + "],\"tasks\":" + *array + "}\n";
}

Answer decodeAnswer(std::string_view line) {
    const simdjson::padded_string padded(line);
    ondemand::parser parser;
    ondemand::document document;
    ondemand::object object;
    if (parser.iterate(padded).get(document) != simdjson::SUCCESS ||
        document.get_object().get(object) != simdjson::SUCCESS)
        return noAnswer;
    std::optional<std::vector<std::size_t>> numbers;
    std::optional<std::vector<TodoItem>> items;
    // Nothing may be asked of the document once something in it was wrong.
    for (auto next : object) {
        ondemand::field field;
        std::string_view key;
        if (std::move(next).get(field) != simdjson::SUCCESS ||
            field.unescaped_key().get(key) != simdjson::SUCCESS)
            return noAnswer;
        if (key == "error") {
            std::string_view error;
            return field.value().get_string().get(error) == simdjson::SUCCESS ? Error{std::string(error)}
                                                                              : noAnswer;
        }
        if (key == "numbers" && !(numbers = readNumbers(field.value())))
            return noAnswer;
        if (key == "tasks" && !(items = readTasks(field.value())))
            return noAnswer;
    }
    if (!numbers || !items || numbers->size() != items->size())
        return noAnswer;
    std::vector<NumberedItem> tasks;
    for (std::size_t index = 0; index < items->size(); ++index)
        tasks.push_back({(*numbers)[index], std::move((*items)[index])});
    return tasks;
}

} // namespace quillo::control
