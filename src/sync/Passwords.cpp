#include "sync/Passwords.h"

#include <simdjson.h>

#include <algorithm>

namespace quillo {

Outcome checkPassword(std::string_view password) {
    if (password.empty())
        return Error{"no password was given"};
    if (password.size() > longestPassword)
        return Error{"the password is too long: it may have " + std::to_string(longestPassword) + " bytes"};
    if (!simdjson::validate_utf8(password))
        return Error{"the password is not in UTF-8"};
    if (std::any_of(password.begin(), password.end(),
                    [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }))
        return Error{"there is a line break or another control character in the password"};
    return success();
}

Error passwordIsWanted(const WebDavFolder& place) {
    return Error{"the password for " + place.user + " at " + place.url +
                 " is not known: give it in the settings, or to quillo sync now"};
}

} // namespace quillo
