#include "sync/SyncPlace.h"

#include <simdjson.h>

#include <optional>

namespace quillo {

namespace {

constexpr std::string_view off = "off";
constexpr std::string_view folder = "folder ";

} // namespace

Result<SyncPlace> readSyncPlace(std::string_view text) {
    if (text == off)
        return SyncPlace(NoPlace{});
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
    const auto* const synced = std::get_if<SyncedFolder>(&place);
    return synced != nullptr ? std::string(folder) + synced->root.string() : std::string(off);
}

SyncPlace chosenSyncPlace(const Preferences& preferences) {
    const std::optional<std::string> kept = preferences.text(preference_keys::syncPlace);
    const Result<SyncPlace> place = kept ? readSyncPlace(*kept) : SyncPlace(NoPlace{});
    return place ? *place : SyncPlace(NoPlace{});
}

} // namespace quillo
