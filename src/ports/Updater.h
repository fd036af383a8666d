/// Newer releases of the program: whether there is one, and its archive.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <variant>

namespace quillo {

/// A release that is newer than this program and would run here.
struct UpdateOffer {
    std::string build;        ///< dotted numbers; names the release
    std::string version;      ///< for people
    std::string notes;        ///< what is new, as text or as HTML; may be empty
    std::uint64_t length = 0; ///< of the archive, in bytes

    /// Set where a package manager owns the program's files, which are then not ours to replace: the command
    /// that makes it bring the release; empty where none is known.
    std::optional<std::string> packageCommand;

    friend bool operator==(const UpdateOffer&, const UpdateOffer&) = default;
};

/// Why there is no answer, or no archive.
enum class UpdateFailure {
    noFeed,            ///< this build was not told where releases are to be found
    unreachable,       ///< no connection, or it broke off, or the server refuses
    tooSlow,           ///< the server took longer than anybody waits
    insecure,          ///< the way there leads over a connection that anybody can listen to
    feedTooLarge,      ///< the list of releases has no end in sight
    feedForged,        ///< the list was not signed by the makers
    feedUnreadable,    ///< the list was signed, and is none
    feedOutdated,      ///< the list knows less than one that was seen before
    systemTooOld,      ///< there is a newer release, but not for this system
    archiveWrongSize,  ///< the archive is shorter or longer than it should be
    archiveForged,     ///< the archive was not signed by the makers
    archiveNotWritable ///< the archive cannot be kept in the download folder
};

/// Neither an offer nor a failure: nothing is newer.
struct UpToDate {
    friend bool operator==(UpToDate, UpToDate) = default;
};

/// Does one thing at a time. Belongs to the main thread, never waits there, and answers there, never before
/// the question has returned. What it hands out was signed by the makers of the program.
class Updater {
public:
    using CheckResult = std::variant<UpToDate, UpdateOffer, UpdateFailure>;
    using CheckAnswer = std::function<void(const CheckResult&)>;

    using DownloadResult = std::variant<std::filesystem::path, UpdateFailure>;
    using DownloadAnswer = std::function<void(const DownloadResult&)>;
    using DownloadProgress = std::function<void(std::uint64_t received)>; ///< bytes of the archive so far

    virtual ~Updater() = default;

    /// Looks for a newer release. Gives up what is under way.
    virtual void check(CheckAnswer answer) = 0;

    /// Fetches the archive of the release that the last check offered into the user's download folder. Only
    /// after such a check; gives up what is under way.
    virtual void download(DownloadProgress progress, DownloadAnswer answer) = 0;

    /// Gives up what is under way: nothing of it is left, and it is not answered.
    virtual void cancel() = 0;

    /// Shows a file in the desktop's file manager.
    virtual void reveal(const std::filesystem::path& file) = 0;
};

} // namespace quillo
