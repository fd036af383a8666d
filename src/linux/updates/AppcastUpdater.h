/// Newer releases, from a list of them on the web.
#pragma once

#include "base/CallbackScope.h"
#include "base/Clock.h"
#include "base/Executor.h"
#include "base/SerialQueue.h"
#include "linux/updates/Appcast.h"
#include "linux/updates/ArchiveFile.h"
#include "linux/updates/Fetch.h"
#include "linux/updates/ReleaseKeys.h"
#include "ports/Preferences.h"
#include "ports/Updater.h"

#include <QNetworkAccessManager>
#include <QString>
#include <QUrl>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quillo {

struct AppcastUpdaterOptions {
    QUrl feed;         ///< empty: there is none
    ReleaseKeys keys;  ///< the feed and the archives are signed with one of them
    std::string build; ///< of this program

    /// Where archives go, and whose the program's files are (see Updater). Both are asked for on a thread of
    /// its own.
    std::function<QString()> downloadFolder;
    std::function<std::optional<std::string>()> packageCommand;

    /// How long a server may be silent, and may take for the feed.
    std::chrono::milliseconds patience = std::chrono::seconds(30);

    /// Whether this very machine may be talked to without encryption. For tests.
    bool trustLoopback = false;

    static AppcastUpdaterOptions ofThisProgram();
};

/// A feed (see Appcast.h) with its signature beside it, in Base64 under the feed's address and ".sig". Both
/// the feed and the archive have to be signed, so that neither an old archive can be passed off for a new
/// release nor a new one be hidden; a feed that knows less than one seen before is refused. Touches neither
/// network nor disk before the first check.
class AppcastUpdater final : public Updater {
public:
    /// The preferences, of which it keeps the highest build seen, the clock and the main thread's executor
    /// outlive it.
    AppcastUpdater(AppcastUpdaterOptions options, Preferences& preferences, const Clock& clock,
                   Executor& mainExecutor);
    ~AppcastUpdater() override;

    void check(CheckAnswer answer) override;
    void download(DownloadProgress progress, DownloadAnswer answer) override;
    void cancel() override;
    void reveal(const std::filesystem::path& file) override;

private:
    struct Examined;

    bool allows(const QUrl& address) const;
    void fetch(const QUrl& address, const FetchLimits& limits, Fetch::Received received, Fetch::Done done);
    void fetchSignature(const CheckAnswer& answer);
    void examine(const CheckAnswer& answer);
    void keepArchive(const DownloadAnswer& answer);

    const AppcastUpdaterOptions with_;
    Preferences& preferences_;
    const Clock& clock_;
    Executor& mainExecutor_;
    std::optional<AppcastItem> offered_;             ///< by the last check
    std::unique_ptr<QNetworkAccessManager> network_; ///< from the first check on
    std::unique_ptr<Fetch> fetch_;
    QByteArray feed_;
    QByteArray feedSignature_;
    std::shared_ptr<ArchiveFile> archive_; ///< being downloaded
    SerialQueue queue_{"Quillo.Updates"};
    std::optional<CallbackScope> underWay_;
};

} // namespace quillo
