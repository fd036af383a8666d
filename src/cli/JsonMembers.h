/// An object of JSON text, taken apart.
#pragma once

#include "base/Result.h"

#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quillo::cli {

/// A member's value.
struct JsonMember {
    enum class Kind {
        Absent, ///< or null
        Text,
        Number,
        Flag, ///< true or false
        Array,
        Object,
    };
    Kind kind = Kind::Absent;
    std::string text = "null"; ///< a text's content; anything else as JSON text, numbers as they were written
};

/// By name.
using JsonMembers = std::map<std::string_view, JsonMember>;

/// Reads an object of well-formed UTF-8 and gives the members of these names, each of which is in the result;
/// any others are ignored. Of several of the same name the last counts. Numbers may be of any size. Absent if
/// it is no JSON object, or values are nested too deeply. The names must live as long as the result.
std::optional<JsonMembers> readJsonMembers(const std::string& json,
                                           std::initializer_list<std::string_view> names);

/// A value of one type; `otherwise` where the member is absent. A value of another type is an error, which
/// calls the member by the name. Integers must fit 64 bits and be written as such, without a point or an
/// exponent.
Result<std::string> textOf(const JsonMember& member, std::string_view name, const std::string& otherwise);
Result<std::int64_t> integerOf(const JsonMember& member, std::string_view name, std::int64_t otherwise);
Result<bool> flagOf(const JsonMember& member, std::string_view name, bool otherwise);

/// A member's value as JSON text.
std::string toJson(const JsonMember& member);

/// A text as JSON text, quotes and all.
std::string toJson(std::string_view text);

} // namespace quillo::cli
