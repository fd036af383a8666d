#include "model/TodoItemJson.h"

#include "base/UtcTime.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <simdjson.h>

#include <stdexcept>
#include <utility>

namespace quillo {

// Reading. On-Demand looks only at what it is asked for, so everything is asked for: a value that is merely
// skipped could hide damage.

namespace {

namespace ondemand = simdjson::ondemand;

constexpr int deepestNesting = 64;

bool read(ondemand::value& value, bool& result) {
    return value.get_bool().get(result) == simdjson::SUCCESS;
}

bool read(ondemand::value& value, Instant& result) {
    return value.get_double().get(result.secondsSince2001) == simdjson::SUCCESS;
}

bool read(ondemand::value& value, std::string& result) {
    std::string_view text;
    if (value.get_string().get(text) != simdjson::SUCCESS)
        return false;
    result = text;
    return true;
}

bool read(ondemand::value& value, Uuid& result) {
    constexpr std::size_t length = std::tuple_size_v<decltype(result.characters())>;
    static_assert(length < simdjson::SIMDJSON_PADDING);
    ondemand::raw_json_string raw;
    if (value.get_raw_json_string().get(raw) != simdjson::SUCCESS)
        return false;
    // Hardly anybody writes one with escapes, so it is read where it stands first.
    std::string_view text(raw.raw(), length);
    if (raw.raw()[length] != '"' && value.get_string().get(text) != simdjson::SUCCESS)
        return false;
    const std::optional<Uuid> uuid = Uuid::parse(text);
    result = uuid.value_or(result);
    return uuid.has_value();
}

template <class T>
bool read(ondemand::value& value, std::optional<T>& result) {
    bool isNull = false;
    if (value.is_null().get(isNull) != simdjson::SUCCESS)
        return false;
    if (isNull) {
        result.reset();
        return true;
    }
    return read(value, result.emplace());
}

/// Reads a value nobody asked for, to the last bit of it. False if anything in it is malformed, or nested too
/// deep.
bool check(ondemand::value value, int depth) {
    if (depth > deepestNesting)
        return false;
    ondemand::json_type type{};
    if (value.type().get(type) != simdjson::SUCCESS)
        return false;
    switch (type) {
    case ondemand::json_type::object: {
        ondemand::object object;
        if (value.get_object().get(object) != simdjson::SUCCESS)
            return false;
        for (auto field : object) {
            std::string_view key;
            ondemand::value member;
            if (field.unescaped_key().get(key) != simdjson::SUCCESS ||
                field.value().get(member) != simdjson::SUCCESS || !check(member, depth + 1))
                return false;
        }
        return true;
    }
    case ondemand::json_type::array: {
        ondemand::array array;
        if (value.get_array().get(array) != simdjson::SUCCESS)
            return false;
        for (auto element : array) {
            ondemand::value member;
            if (element.get(member) != simdjson::SUCCESS || !check(member, depth + 1))
                return false;
        }
        return true;
    }
    case ondemand::json_type::string:
        return value.get_string().error() == simdjson::SUCCESS;
    case ondemand::json_type::number:
        return value.get_double().error() == simdjson::SUCCESS;
    case ondemand::json_type::boolean:
        return value.get_bool().error() == simdjson::SUCCESS;
    case ondemand::json_type::null: {
        bool isNull = false;
        return value.is_null().get(isNull) == simdjson::SUCCESS && isNull;
    }
    }
    return false;
}

enum class Key { id, title, isDone, dueDate, createdAt, completedAt, notificationID, other };

template <class Text>
Key keyNamed(Text name) {
    if (name == "id")
        return Key::id;
    if (name == "title")
        return Key::title;
    if (name == "isDone")
        return Key::isDone;
    if (name == "dueDate")
        return Key::dueDate;
    if (name == "createdAt")
        return Key::createdAt;
    if (name == "completedAt")
        return Key::completedAt;
    if (name == "notificationID")
        return Key::notificationID;
    return Key::other;
}

/// Which key a field has. Hardly anybody writes these names with escapes, so they are compared as they stand
/// first.
std::optional<Key> keyOf(ondemand::field& field) {
    const Key key = keyNamed(field.key());
    if (key != Key::other)
        return key;
    std::string_view unescaped;
    if (field.unescaped_key().get(unescaped) != simdjson::SUCCESS)
        return std::nullopt;
    return keyNamed(unescaped);
}

bool readItem(ondemand::value value, TodoItem& item) {
    ondemand::object object;
    if (value.get_object().get(object) != simdjson::SUCCESS)
        return false;
    bool hasId = false;
    bool hasTitle = false;
    bool hasIsDone = false;
    bool hasCreatedAt = false;
    for (auto next : object) {
        if (next.error() != simdjson::SUCCESS)
            return false;
        ondemand::field&& field =
            std::move(next).value_unsafe(); // In place: a copy takes as long as reading it.
        const std::optional<Key> key = keyOf(field);
        if (!key)
            return false;
        bool good = false;
        switch (*key) {
        case Key::id:
            good = hasId = read(field.value(), item.id);
            break;
        case Key::title:
            good = hasTitle = read(field.value(), item.title);
            break;
        case Key::isDone:
            good = hasIsDone = read(field.value(), item.isDone);
            break;
        case Key::dueDate:
            good = read(field.value(), item.dueDate);
            break;
        case Key::createdAt:
            good = hasCreatedAt = read(field.value(), item.createdAt);
            break;
        case Key::completedAt:
            good = read(field.value(), item.completedAt);
            break;
        case Key::notificationID:
            good = read(field.value(), item.notificationID);
            break;
        case Key::other:
            good = check(field.value(), 1);
            break;
        }
        if (!good)
            return false;
    }
    return hasId && hasTitle && hasIsDone && hasCreatedAt;
}

} // namespace

std::optional<std::vector<TodoItem>> decodeStoredItems(std::string_view bytes) {
    if (bytes.size() > largestStoredList)
        return std::nullopt;
    const simdjson::padded_string padded(bytes);
    ondemand::parser parser;
    ondemand::document document;
    ondemand::array array;
    if (parser.iterate(padded).get(document) != simdjson::SUCCESS ||
        document.get_array().get(array) != simdjson::SUCCESS)
        return std::nullopt;
    std::vector<TodoItem> items;
    items.reserve(bytes.size() / 100); // More than there are: memory that is not touched costs nothing.
    for (auto element : array) {
        ondemand::value value;
        if (element.get(value) != simdjson::SUCCESS || !readItem(value, items.emplace_back()))
            return std::nullopt;
    }
    const bool nothingBehind = document.current_location().error() == simdjson::OUT_OF_BOUNDS;
    return nothingBehind ? std::optional(std::move(items)) : std::nullopt;
}

// Writing.

namespace {

using StoredWriter = rapidjson::Writer<rapidjson::StringBuffer>;
using ExportWriter = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

/// The text with U+FFFD in the place of each byte that belongs to no well-formed UTF-8 sequence.
std::string madeWellFormed(std::string_view text) {
    constexpr std::size_t longestSequence = 4;
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t length = 1;
        while (length <= longestSequence && !simdjson::validate_utf8(text.substr(at, length)))
            ++length;
        if (length <= longestSequence) {
            result.append(text, at, length);
            at += length;
        } else {
            result.append("\xEF\xBF\xBD");
            ++at;
        }
    }
    return result;
}

template <class Writer>
void writeKey(Writer& writer, std::string_view key) {
    writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
}

template <class Writer>
void writeId(Writer& writer, const Uuid& id) {
    const auto text = id.characters();
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

template <class Writer>
void writeText(Writer& writer, std::string_view text) {
    if (text.size() > largestStoredList)
        throw std::length_error("text too long for JSON"); // RapidJSON counts in 32 bits.
    if (simdjson::validate_utf8(text)) {
        writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    } else {
        const std::string good = madeWellFormed(text);
        writer.String(good.data(), static_cast<rapidjson::SizeType>(good.size()));
    }
}

bool fits(const TodoItem& item) {
    return item.title.size() <= largestStoredList &&
           (!item.notificationID || item.notificationID->size() <= largestStoredList);
}

/// False if one of the instants is no finite number.
bool writeStored(StoredWriter& writer, const TodoItem& item) {
    writer.StartObject();
    writeKey(writer, "id");
    writeId(writer, item.id);
    writeKey(writer, "title");
    writeText(writer, item.title);
    writeKey(writer, "isDone");
    writer.Bool(item.isDone);
    bool finite = true;
    if (item.dueDate) {
        writeKey(writer, "dueDate");
        finite &= writer.Double(item.dueDate->secondsSince2001);
    }
    writeKey(writer, "createdAt");
    finite &= writer.Double(item.createdAt.secondsSince2001);
    if (item.completedAt) {
        writeKey(writer, "completedAt");
        finite &= writer.Double(item.completedAt->secondsSince2001);
    }
    if (item.notificationID) {
        writeKey(writer, "notificationID");
        writeText(writer, *item.notificationID);
    }
    writer.EndObject();
    return finite;
}

void writeExported(ExportWriter& writer, const TodoItem& item, std::optional<std::size_t> number) {
    const auto writeTime = [&writer](std::string_view key, Instant instant) {
        writeKey(writer, key);
        writeText(writer, isoTime(floorToSecond(instant)));
    };
    writer.StartObject();
    if (item.completedAt)
        writeTime("completedAt", *item.completedAt);
    writeTime("createdAt", item.createdAt);
    if (item.dueDate)
        writeTime("dueDate", *item.dueDate);
    writeKey(writer, "id");
    writeId(writer, item.id);
    writeKey(writer, "isDone");
    writer.Bool(item.isDone);
    if (item.notificationID) {
        writeKey(writer, "notificationID");
        writeText(writer, *item.notificationID);
    }
    if (number) {
        writeKey(writer, "number");
        writer.Uint64(*number);
    }
    writeKey(writer, "title");
    writeText(writer, item.title);
    writer.EndObject();
}

std::string contents(const rapidjson::StringBuffer& buffer) {
    return {buffer.GetString(), buffer.GetSize()};
}

} // namespace

struct StoredItemsWriter::State {
    rapidjson::StringBuffer buffer;
    StoredWriter writer{buffer};
    bool good = true;
};

StoredItemsWriter::StoredItemsWriter() : state_(std::make_unique<State>()) {
    state_->writer.StartArray();
}

StoredItemsWriter::~StoredItemsWriter() = default;

void StoredItemsWriter::add(const TodoItem& item) {
    state_->good = state_->good && fits(item) && writeStored(state_->writer, item);
}

std::optional<std::string> StoredItemsWriter::finish() {
    state_->writer.EndArray();
    if (!state_->good || state_->buffer.GetSize() > largestStoredList)
        return std::nullopt;
    return contents(state_->buffer);
}

struct ExportedItemsWriter::State {
    State() { writer.SetIndent(' ', 2); }

    rapidjson::StringBuffer buffer;
    ExportWriter writer{buffer};
};

ExportedItemsWriter::ExportedItemsWriter() : state_(std::make_unique<State>()) {
    state_->writer.StartArray();
}

ExportedItemsWriter::~ExportedItemsWriter() = default;

void ExportedItemsWriter::add(const TodoItem& item, std::optional<std::size_t> number) {
    writeExported(state_->writer, item, number);
}

std::string ExportedItemsWriter::finish() {
    state_->writer.EndArray();
    return contents(state_->buffer);
}

std::string encodeExportedItem(const TodoItem& item, std::optional<std::size_t> number) {
    rapidjson::StringBuffer buffer;
    ExportWriter writer(buffer);
    writer.SetIndent(' ', 2);
    writeExported(writer, item, number);
    return contents(buffer);
}

} // namespace quillo
