#include "cli/JsonRequest.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string_view>

namespace quillo::cli {

namespace {

using Size = rapidjson::SizeType;

constexpr std::size_t deepestNesting = 512;

/// Takes note of the members as they come by. Whatever belongs to the id is written down again as JSON.
class Handler {
public:
    explicit Handler(JsonRequest& request) : request_(request) {}

    bool Null() {
        return value({}, [](Writer& id) { return id.Null(); });
    }
    bool Bool(bool flag) {
        return value({JsonMember::Kind::Other, {}}, [flag](Writer& id) { return id.Bool(flag); });
    }
    bool RawNumber(const char* text, Size length, bool) {
        return value({JsonMember::Kind::Number, {text, length}},
                     [=](Writer& id) { return id.RawValue(text, length, rapidjson::kNumberType); });
    }
    bool String(const char* text, Size length, bool) {
        return value({JsonMember::Kind::Text, {text, length}},
                     [=](Writer& id) { return id.String(text, length); });
    }
    bool Key(const char* text, Size length, bool) {
        if (depth_ > 1)
            return !inId_ || id_.Key(text, length);
        const std::string_view name(text, length);
        inId_ = name == "id";
        member_ = name == "text"     ? &request_.text
                  : name == "now"    ? &request_.now
                  : name == "tz"     ? &request_.zone
                  : name == "locale" ? &request_.locale
                                     : nullptr;
        if (inId_) {
            buffer_.Clear();
            id_.Reset(buffer_);
        }
        return true;
    }
    bool StartObject() {
        return open([](Writer& id) { return id.StartObject(); });
    }
    bool EndObject(Size) {
        return close([](Writer& id) { return id.EndObject(); });
    }
    bool StartArray() {
        // At the top there must be an object.
        return depth_ > 0 && open([](Writer& id) { return id.StartArray(); });
    }
    bool EndArray(Size) {
        return close([](Writer& id) { return id.EndArray(); });
    }

    // Numbers come as they were written, never as these.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

private:
    using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

    template <class Write>
    bool value(JsonMember member, Write write) {
        if (depth_ == 0)
            return false;
        if (inId_ && !write(id_))
            return false;
        if (depth_ == 1)
            endMember(std::move(member));
        return true;
    }

    template <class Write>
    bool open(Write write) {
        ++depth_;
        if (depth_ > deepestNesting)
            return false;
        return depth_ == 1 || !inId_ || write(id_);
    }

    template <class Write>
    bool close(Write write) {
        --depth_;
        if (depth_ == 0)
            return true;
        if (inId_ && !write(id_))
            return false;
        if (depth_ == 1)
            endMember({JsonMember::Kind::Other, {}});
        return true;
    }

    void endMember(JsonMember member) {
        if (inId_)
            request_.id.assign(buffer_.GetString(), buffer_.GetSize());
        else if (member_ != nullptr)
            *member_ = std::move(member);
    }

    JsonRequest& request_;
    std::size_t depth_ = 0;
    JsonMember* member_ = nullptr; ///< where the member at hand goes, if it is asked for
    bool inId_ = false;
    rapidjson::StringBuffer buffer_;
    Writer id_{buffer_};
};

} // namespace

std::optional<JsonRequest> readJsonRequest(const std::string& line) {
    if (line.find('\0') != std::string::npos)
        return std::nullopt; // RapidJSON would take it for the end.
    JsonRequest request;
    Handler handler(request);
    rapidjson::MemoryStream stream(line.data(), line.size());
    rapidjson::Reader reader;
    // Iterative: however deep values are nested, the stack does not grow.
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
    if (reader.Parse<flags>(stream, handler).IsError())
        return std::nullopt;
    return request;
}

} // namespace quillo::cli
