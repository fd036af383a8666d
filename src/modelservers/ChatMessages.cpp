#include "modelservers/ChatMessages.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

#include <optional>
#include <utility>

namespace quillo {

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void writeText(Writer& json, std::string_view text) {
    json.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void writeMember(Writer& json, const char* key, std::string_view text) {
    json.Key(key);
    writeText(json, text);
}

void writeMessage(Writer& json, const char* role, std::string_view content) {
    json.StartObject();
    writeMember(json, "role", role);
    writeMember(json, "content", content);
    json.EndObject();
}

const char* nameOf(PropertyGuide::Type type) {
    switch (type) {
    case PropertyGuide::Type::Text:
        return "string";
    case PropertyGuide::Type::Integer:
        return "integer";
    case PropertyGuide::Type::Boolean:
        return "boolean";
    }
    return "";
}

void writeProperty(Writer& json, const PropertyGuide& property) {
    writeText(json, property.name);
    json.StartObject();
    writeMember(json, "type", nameOf(property.type));
    if (!property.choices.empty()) {
        json.Key("enum");
        json.StartArray();
        for (const std::string_view choice : property.choices)
            writeText(json, choice);
        json.EndArray();
    }
    writeMember(json, "description", property.description);
    json.EndObject();
}

void writeSchema(Writer& json, AnswerSchema schema) {
    json.StartObject();
    writeMember(json, "type", "object");
    json.Key("properties");
    json.StartObject();
    for (const PropertyGuide& property : schema)
        writeProperty(json, property);
    json.EndObject();
    json.Key("required");
    json.StartArray();
    for (const PropertyGuide& property : schema)
        writeText(json, property.name);
    json.EndArray();
    json.Key("additionalProperties");
    json.Bool(false);
    json.EndObject();
}

void writeResponseFormat(Writer& json, AnswerSchema schema) {
    json.Key("response_format");
    json.StartObject();
    writeMember(json, "type", "json_schema");
    json.Key("json_schema");
    json.StartObject();
    writeMember(json, "name", "todo");
    json.Key("strict");
    json.Bool(true);
    json.Key("schema");
    writeSchema(json, schema);
    json.EndObject();
    json.EndObject();
}

/// The form in words.
std::string described(AnswerSchema schema) {
    std::string text = "\n\nAnswer with one JSON object that has these properties, in this order:\n";
    for (const PropertyGuide& property : schema) {
        text.append("- ").append(property.name).append(" (").append(nameOf(property.type)).append("): ");
        text.append(property.description).append("\n");
    }
    return text;
}

std::string textOf(const rapidjson::StringBuffer& buffer) {
    return {buffer.GetString(), buffer.GetSize()};
}

std::optional<GeneratedContent::Value> readValue(simdjson::dom::element element) {
    std::string_view text;
    std::int64_t number = 0;
    bool flag = false;
    if (element.get_string().get(text) == simdjson::SUCCESS)
        return std::string(text);
    if (element.type() == simdjson::dom::element_type::INT64 &&
        element.get_int64().get(number) == simdjson::SUCCESS)
        return number;
    if (element.get_bool().get(flag) == simdjson::SUCCESS)
        return flag;
    return std::nullopt;
}

} // namespace

std::string encodeQuestion(const ChatQuestion& question) {
    rapidjson::StringBuffer buffer;
    Writer json(buffer);
    json.StartObject();
    writeMember(json, "model", question.model);
    json.Key("messages");
    json.StartArray();
    writeMessage(json, "system",
                 question.instructions + (question.schemaInPrompt ? described(question.schema) : ""));
    writeMessage(json, "user", question.prompt);
    json.EndArray();
    json.Key("stream");
    json.Bool(false);
    writeResponseFormat(json, question.schema);
    json.EndObject();
    return textOf(buffer);
}

Result<GeneratedContent> readAnswer(std::string_view body) {
    simdjson::dom::parser chat;
    std::string_view text;
    if (chat.parse(body.data(), body.size())["choices"].at(0)["message"]["content"].get_string().get(text) !=
        simdjson::SUCCESS)
        return Error{"its answer holds no text"};
    simdjson::dom::parser form;
    simdjson::dom::object object;
    if (form.parse(text.data(), text.size()).get_object().get(object) != simdjson::SUCCESS)
        return Error{"its model does not keep to the form"};
    GeneratedContent content;
    for (const auto& [name, element] : object) {
        std::optional<GeneratedContent::Value> value = readValue(element);
        if (!value)
            return Error{"its model does not keep to the types of the form"};
        content.properties.emplace_back(name, *std::move(value));
    }
    return content;
}

std::string encodeReadAhead(const std::string& model, const std::string& instructions) {
    rapidjson::StringBuffer buffer;
    Writer json(buffer);
    json.StartObject();
    writeMember(json, "model", model);
    json.Key("messages");
    json.StartArray();
    writeMessage(json, "system", instructions);
    writeMessage(json, "user", "."); // Some models' templates want one.
    json.EndArray();
    json.Key("stream");
    json.Bool(false);
    json.Key("max_tokens");
    json.Int(1);
    json.EndObject();
    return textOf(buffer);
}

std::string encodeLoading(const std::string& model) {
    rapidjson::StringBuffer buffer;
    Writer json(buffer);
    json.StartObject();
    writeMember(json, "model", model);
    json.Key("messages");
    json.StartArray();
    json.EndArray();
    json.Key("stream");
    json.Bool(false);
    json.EndObject();
    return textOf(buffer);
}

bool isOllamaVersion(std::string_view body) {
    simdjson::dom::parser parser;
    std::string_view version;
    return parser.parse(body.data(), body.size())["version"].get_string().get(version) == simdjson::SUCCESS;
}

} // namespace quillo
