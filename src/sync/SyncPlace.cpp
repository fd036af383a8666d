#include "sync/SyncPlace.h"

#include "base/HttpAddress.h"

#include <simdjson.h>

#include <algorithm>
#include <cstddef>
#include <optional>

namespace quillo {

namespace {

constexpr std::string_view off = "off";
constexpr std::string_view folder = "folder ";
constexpr std::string_view webDav = "webdav ";
constexpr std::size_t longestUrl = 2048;
constexpr std::size_t longestUser = 1024;

bool isHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

/// Whether a server takes the path as it stands: each "%" begins an escape, and no part is "." or "..".
bool isPlainPath(std::string_view path) {
    for (std::size_t at = path.find('%'); at != std::string_view::npos; at = path.find('%', at + 1)) {
        if (at + 2 >= path.size() || !isHexDigit(path[at + 1]) || !isHexDigit(path[at + 2]))
            return false;
    }
    const std::string whole = std::string(path) + '/';
    return whole.find("/./") == std::string::npos && whole.find("/../") == std::string::npos;
}

/// No error repeats what was typed: there may be a password in it.
Result<std::string> readUrl(std::string_view typed) {
    const std::size_t scheme = typed.find("://");
    const std::size_t host = scheme == std::string_view::npos ? 0 : scheme + 3;
    if (typed.substr(host, typed.find('/', host) - host).find('@') != std::string_view::npos)
        return Error{
            "no user and no password belong into the URL: say --user, and the password is asked for"};
    std::optional<HttpAddress> address = readHttpAddress(typed);
    if (typed.size() > longestUrl || !address || !isPlainPath(address->path))
        return Error{"that is no URL of a folder, such as https://example.org/dav/My%20Files"};
    if (address->scheme == "http" && !isOnThisMachine(*address))
        return Error{"on the way to another machine everybody could read along: the URL has to begin with "
                     "https://"};
    while (address->path.ends_with('/'))
        address->path.pop_back();
    return toText(*address);
}

/// One that HTTP can carry beside a password (RFC 7617).
bool isUser(std::string_view name) {
    return name.size() <= longestUser && simdjson::validate_utf8(name) &&
           std::none_of(name.begin(), name.end(), [](char c) {
               return static_cast<unsigned char>(c) < ' ' || c == '\x7F' || c == ':';
           });
}

Result<SyncPlace> readWebDav(std::string_view text) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const Result<std::string> url = readUrl(text.substr(0, end));
    if (!url)
        return url.error();
    const std::string_view user = text.substr(std::min(end + 1, text.size()));
    if (!isUser(user))
        return Error{"no user has such a name: it is too long, or has a colon or a control character in it"};
    return SyncPlace(WebDavFolder{*url, std::string(user)});
}

struct TextOf {
    std::string operator()(const NoPlace&) const { return std::string(off); }
    std::string operator()(const SyncedFolder& place) const {
        return std::string(folder) + place.root.string();
    }
    std::string operator()(const WebDavFolder& place) const {
        return std::string(webDav) + place.url + (place.user.empty() ? "" : ' ' + place.user);
    }
};

} // namespace

Result<SyncPlace> readSyncPlace(std::string_view text) {
    if (text == off)
        return SyncPlace(NoPlace{});
    if (text.starts_with(webDav))
        return readWebDav(text.substr(webDav.size()));
    if (!text.starts_with(folder))
        return Error{"that is no place to keep the list in step through"};
    const std::string name(text.substr(folder.size()));
    std::filesystem::path root = std::filesystem::path(name).lexically_normal();
    if (!root.has_filename()) // It ends in a slash.
        root = root.parent_path();
    if (!root.is_absolute() || name.find('\0') != std::string::npos || !simdjson::validate_utf8(name))
        return Error{"\"" + name + "\" is no absolute path of a folder in UTF-8"};
    return SyncPlace(SyncedFolder{std::move(root)});
}

std::string toText(const SyncPlace& place) {
    return std::visit(TextOf{}, place);
}

SyncPlace chosenSyncPlace(const Preferences& preferences) {
    const std::optional<std::string> kept = preferences.text(preference_keys::syncPlace);
    const Result<SyncPlace> place = kept ? readSyncPlace(*kept) : SyncPlace(NoPlace{});
    return place ? *place : SyncPlace(NoPlace{});
}

} // namespace quillo
