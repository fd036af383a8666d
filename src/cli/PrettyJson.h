/// JSON as commands print it for programs, and for people who look into it.
#pragma once

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <optional>
#include <string>

namespace quillo::cli {

using PrettyWriter = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

/// An absent text is null.
inline void writeMember(PrettyWriter& json, const char* key, const std::optional<std::string>& text) {
    json.Key(key);
    if (text)
        json.String(text->data(), static_cast<rapidjson::SizeType>(text->size()));
    else
        json.Null();
}

inline void writeMember(PrettyWriter& json, const char* key, bool flag) {
    json.Key(key);
    json.Bool(flag);
}

} // namespace quillo::cli
