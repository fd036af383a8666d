/// Where the user wants the list to be kept in step through.
#pragma once

#include "base/Result.h"
#include "ports/Preferences.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <variant>

namespace quillo {

/// Nowhere: until a place is chosen, and once keeping in step is ended.
struct NoPlace {
    friend bool operator==(const NoPlace&, const NoPlace&) = default;
};

/// A folder that something else keeps in step between machines.
struct SyncedFolder {
    std::filesystem::path root; ///< absolute, normal, UTF-8

    friend bool operator==(const SyncedFolder&, const SyncedFolder&) = default;
};

/// A folder on a server that speaks WebDAV (RFC 4918).
struct WebDavFolder {
    /// https, or http on this machine; without user, password, query, fragment and slash at the end. ASCII,
    /// percent-encoded as it was typed.
    std::string url;
    std::string user; ///< whose password is asked for; empty: the server is told of nobody. Without colon

    friend bool operator==(const WebDavFolder&, const WebDavFolder&) = default;
};

using SyncPlace = std::variant<NoPlace, SyncedFolder, WebDavFolder>;

/// Reads "off", "folder PATH", an absolute path, or "webdav URL[ USER]". An error is one in words for the
/// user; it does not repeat a URL, as somebody may have put a password there.
Result<SyncPlace> readSyncPlace(std::string_view text);

/// The form that readSyncPlace() reads.
std::string toText(const SyncPlace& place);

/// What the preferences say; none where they say nothing, or nothing that can be read.
SyncPlace chosenSyncPlace(const Preferences& preferences);

} // namespace quillo
