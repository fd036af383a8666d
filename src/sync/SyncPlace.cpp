#include "sync/SyncPlace.h"

#include <simdjson.h>

#include <algorithm>
#include <optional>

namespace quillo {

namespace {

constexpr std::string_view off = "off";
constexpr std::string_view folder = "folder ";
constexpr std::string_view webDav = "webdav ";

std::optional<WebDavFolder> readWebDav(std::string_view text) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view url = text.substr(0, end);
    if (!url.starts_with("https://") && !url.starts_with("http://"))
        return std::nullopt;
    return WebDavFolder{std::string(url), std::string(text.substr(std::min(end + 1, text.size())))};
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
    if (text.starts_with(webDav)) {
        if (const std::optional<WebDavFolder> place = readWebDav(text.substr(webDav.size())))
            return SyncPlace(*place);
    }
    if (!text.starts_with(folder))
        return Error{"\"" + std::string(text) + "\" is no place to keep the list in step through"};
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
