#include "cli/JsonMembers.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <charconv>

namespace quillo::cli {

namespace {

using Size = rapidjson::SizeType;
using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

constexpr std::size_t deepestNesting = 512;

/// Takes note of the members as they come by. Arrays and objects in them are written down again as JSON.
class Handler {
public:
    explicit Handler(JsonMembers& members) : members_(members) {}

    bool Null() {
        return value(JsonMember::Kind::Absent, "null", [](Writer& json) { return json.Null(); });
    }
    bool Bool(bool flag) {
        return value(JsonMember::Kind::Flag, flag ? "true" : "false",
                     [=](Writer& json) { return json.Bool(flag); });
    }
    bool RawNumber(const char* text, Size length, bool) {
        return value(JsonMember::Kind::Number, {text, length},
                     [=](Writer& json) { return json.RawValue(text, length, rapidjson::kNumberType); });
    }
    bool String(const char* text, Size length, bool) {
        return value(JsonMember::Kind::Text, {text, length},
                     [=](Writer& json) { return json.String(text, length); });
    }
    bool Key(const char* text, Size length, bool) {
        if (depth_ > 1)
            return member_ == nullptr || nested_.Key(text, length);
        const auto asked = members_.find(std::string_view(text, length));
        member_ = asked == members_.end() ? nullptr : &asked->second;
        return true;
    }
    bool StartObject() {
        return open([](Writer& json) { return json.StartObject(); });
    }
    bool EndObject(Size) {
        return close(JsonMember::Kind::Object, [](Writer& json) { return json.EndObject(); });
    }
    bool StartArray() {
        // At the top there must be an object.
        return depth_ > 0 && open([](Writer& json) { return json.StartArray(); });
    }
    bool EndArray(Size) {
        return close(JsonMember::Kind::Array, [](Writer& json) { return json.EndArray(); });
    }

    // Numbers come as they were written, never as these.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

private:
    template <class Write>
    bool value(JsonMember::Kind kind, std::string_view text, Write write) {
        if (depth_ == 0)
            return false;
        if (member_ == nullptr)
            return true;
        if (depth_ > 1)
            return write(nested_);
        *member_ = {kind, std::string(text)};
        return true;
    }

    template <class Write>
    bool open(Write write) {
        ++depth_;
        if (depth_ > deepestNesting)
            return false;
        if (depth_ == 1 || member_ == nullptr)
            return true;
        if (depth_ == 2) {
            buffer_.Clear();
            nested_.Reset(buffer_);
        }
        return write(nested_);
    }

    template <class Write>
    bool close(JsonMember::Kind kind, Write write) {
        --depth_;
        if (depth_ == 0 || member_ == nullptr)
            return true;
        if (!write(nested_))
            return false;
        if (depth_ == 1)
            *member_ = {kind, std::string(buffer_.GetString(), buffer_.GetSize())};
        return true;
    }

    JsonMembers& members_;
    std::size_t depth_ = 0;
    JsonMember* member_ = nullptr; ///< where the member at hand goes, if it is asked for
    rapidjson::StringBuffer buffer_;
    Writer nested_{buffer_};
};

Error mustBe(std::string_view name, std::string_view what) {
    return {"\"" + std::string(name) + "\" must be " + std::string(what)};
}

} // namespace

std::optional<JsonMembers> readJsonMembers(const std::string& json,
                                           std::initializer_list<std::string_view> names) {
    if (json.find('\0') != std::string::npos)
        return std::nullopt; // RapidJSON would take it for the end.
    JsonMembers members;
    for (const std::string_view name : names)
        members[name];
    Handler handler(members);
    rapidjson::MemoryStream stream(json.data(), json.size());
    rapidjson::Reader reader;
    // Iterative: however deep values are nested, the stack does not grow.
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
    if (reader.Parse<flags>(stream, handler).IsError())
        return std::nullopt;
    return members;
}

Result<std::string> textOf(const JsonMember& member, std::string_view name, const std::string& otherwise) {
    if (member.kind == JsonMember::Kind::Absent)
        return otherwise;
    if (member.kind == JsonMember::Kind::Text)
        return member.text;
    return mustBe(name, "a text");
}

Result<std::int64_t> integerOf(const JsonMember& member, std::string_view name, std::int64_t otherwise) {
    if (member.kind == JsonMember::Kind::Absent)
        return otherwise;
    std::int64_t value = 0;
    const char* const end = member.text.data() + member.text.size();
    const auto [stop, error] = std::from_chars(member.text.data(), end, value);
    if (member.kind == JsonMember::Kind::Number && error == std::errc() && stop == end)
        return value;
    return mustBe(name, "an integer of at most 64 bits");
}

Result<bool> flagOf(const JsonMember& member, std::string_view name, bool otherwise) {
    if (member.kind == JsonMember::Kind::Absent)
        return otherwise;
    if (member.kind == JsonMember::Kind::Flag)
        return member.text == "true";
    return mustBe(name, "true or false");
}

std::string toJson(const JsonMember& member) {
    return member.kind == JsonMember::Kind::Text ? toJson(member.text) : member.text;
}

std::string toJson(std::string_view text) {
    rapidjson::StringBuffer buffer;
    Writer json(buffer);
    json.String(text.data(), static_cast<Size>(text.size()));
    return {buffer.GetString(), buffer.GetSize()};
}

} // namespace quillo::cli
