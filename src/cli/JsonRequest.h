/// One line of `quillo parse --jsonl`, taken apart.
#pragma once

#include <optional>
#include <string>

namespace quillo::cli {

/// A member of a request.
struct JsonMember {
    enum class Kind {
        Absent, ///< or null
        Text,
        Number,
        Other,
    };
    Kind kind = Kind::Absent;
    std::string text; ///< a text's content, or a number as it was written
};

/// The members that are asked for; any others are ignored. Of several of the same name the last counts.
struct JsonRequest {
    std::string id = "null"; ///< as JSON text, whatever it is
    JsonMember text;
    JsonMember now;
    JsonMember zone;
    JsonMember locale;
};

/// Reads a line of well-formed UTF-8; absent if it is no JSON object. Numbers may be of any size.
std::optional<JsonRequest> readJsonRequest(const std::string& line);

} // namespace quillo::cli
