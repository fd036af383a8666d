/// A server that speaks WebDAV (RFC 4918), as the rest of the program sees it.
#pragma once

#include "base/Result.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quillo {

/// A file as a folder's listing tells of it: as the server says it, and empty where it does not.
struct ListedFile {
    std::string name; ///< without its folder
    std::string etag;
    std::string length;   ///< in bytes
    std::string modified; ///< in one-second steps, often

    friend bool operator==(const ListedFile&, const ListedFile&) = default;
};

/// A file's bytes, absent if it is still what the asker knows by its etag; and its etag, if it has one.
struct FetchedFile {
    std::optional<std::string> bytes;
    std::string etag;
};

/// Why something cannot be had of a server.
struct WebDavFailure {
    enum class Kind {
        Missing,      ///< there is no such file or folder
        Forbidden,    ///< this one is not for us
        TooLarge,     ///< this one is more than is read
        Unauthorized, ///< the server wants to know who asks, or does not believe it
        Other
    };

    Kind kind = Kind::Other;
    Error why;                          ///< for the user
    std::chrono::seconds retryAfter{0}; ///< the server does not want to be asked before that
};

template <class T>
using FromWebDav = std::variant<T, WebDavFailure>;

/// Belongs to one thread at a time, whose calls wait for the server, with a limit each; but for giveUp().
/// Paths are relative to the server's address, of letters that an address may have, and those of folders end
/// in a slash.
///
/// It is in a library of its own, `quillo-webdav`, which is loaded when a place is such a server: HTTP takes
/// thirty more libraries.
class WebDavServer {
public:
    virtual ~WebDavServer() = default;

    /// Who asks, from now on.
    virtual void authenticate(const std::string& user, const std::string& password) = 0;

    /// The files in a folder, in no order. Names may be anything.
    virtual FromWebDav<std::vector<ListedFile>> list(const std::string& folder) = 0;

    /// The file, unless the etag is not empty and still its own.
    virtual FromWebDav<FetchedFile> fetch(const std::string& file, const std::string& etag) = 0;

    /// What is at the server after a failure is not known: the old file, the new one, or half of it.
    virtual FromWebDav<std::monostate> store(const std::string& file, const std::string& bytes) = 0;

    /// Nothing happens where it is not there, or not any more.
    virtual FromWebDav<std::monostate> remove(const std::string& file) = 0;

    /// Nothing happens where it is there already.
    virtual FromWebDav<std::monostate> makeFolder(const std::string& folder) = 0;

    /// Ends what is under way, and whatever is asked later, at once, as failures. Any thread. Nothing is
    /// under way any more when this returns, which does not depend on the server.
    virtual void giveUp() = 0;
};

/// What the library has to offer, under the name in `webDavServerMaker`; given the address. Who gets it owns
/// it.
using MakeWebDavServer = WebDavServer* (*)(const std::string& url);
inline constexpr const char* webDavServerMaker = "quilloMakeWebDavServer";

/// Loads the library the first time, which may take a while. Any thread. An error, and the first time a line
/// in the log, where it cannot be loaded.
Result<std::unique_ptr<WebDavServer>> loadWebDavServer(const std::string& url);

} // namespace quillo
