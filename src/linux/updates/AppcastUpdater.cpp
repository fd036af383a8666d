#include "linux/updates/AppcastUpdater.h"

#include "base/Log.h"
#include "base/Product.h"
#include "linux/updates/PackageCommand.h"

#include <gnu/libc-version.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QHostAddress>
#include <QNetworkAccessManager>
#include <QRegularExpression>
#include <QStandardPaths>
#include <algorithm>
#include <array>
#include <functional>
#include <span>
#include <system_error>
#include <utility>
#include <vector>

namespace quillo {

namespace {

constexpr std::uint64_t mostFeedBytes = 1 << 20;
constexpr std::uint64_t mostSignatureBytes = 1 << 10;
/// Somebody may keep a feed from us by showing an old one; after that time it is worth a line in the log.
constexpr double feedGetsOldAfterDays = 60;
constexpr double secondsADay = 86400;

std::span<const std::byte> octets(const QByteArray& bytes) {
    return std::as_bytes(std::span(bytes.data(), static_cast<std::size_t>(bytes.size())));
}

/// What a program needs of the system that it was not built on is the C library.
bool runsHere(const AppcastItem& item) {
    if (item.minimumSystem.isEmpty())
        return true;
    const auto needed = BuildNumber::parse(item.minimumSystem.toStdString());
    return needed && *needed <= BuildNumber::parse(gnu_get_libc_version());
}

const AppcastItem* newest(const std::vector<AppcastItem>& items, bool (*suits)(const AppcastItem&)) {
    const AppcastItem* found = nullptr;
    for (const AppcastItem& item : items) {
        if (suits(item) && (found == nullptr || item.build > found->build))
            found = &item;
    }
    return found;
}

bool anything(const AppcastItem& /*item*/) {
    return true;
}

/// A file name out of the archive's address, which may say anything.
QString archiveName(const AppcastItem& item) {
    static const QRegularExpression plain(QStringLiteral(R"(\A[A-Za-z0-9][A-Za-z0-9._+~-]{0,99}\z)"));
    const QString name = item.archive.fileName();
    return plain.match(name).hasMatch() ? name : QStringLiteral("quillo-") + item.buildText;
}

void logWhereOld(const AppcastItem& item, Instant now) {
    if (!item.published.isValid())
        return;
    const auto published = Instant::fromUnixSeconds(static_cast<double>(item.published.toSecsSinceEpoch()));
    const double days = (now - published) / secondsADay;
    if (days > feedGetsOldAfterDays)
        log("the newest release on the list is " + std::to_string(static_cast<int>(days)) + " days old");
}

} // namespace

AppcastUpdaterOptions AppcastUpdaterOptions::ofThisProgram() {
    const std::array<std::string_view, product::updateKeys.size()> keys{product::updateKeys[0],
                                                                        product::updateKeys[1]};
    return {
        .feed = QUrl(QString::fromLatin1(product::updateFeed)),
        .keys = ReleaseKeys(keys),
        .build = product::build,
        .downloadFolder = [] { return QStandardPaths::writableLocation(QStandardPaths::DownloadLocation); },
        .packageCommand =
            [] {
                std::error_code error;
                return quillo::packageCommand(std::filesystem::read_symlink("/proc/self/exe", error));
            }};
}

/// What a feed turned out to hold.
struct AppcastUpdater::Examined {
    CheckResult result;
    std::optional<AppcastItem> offered;
    QString highestSeen; ///< empty where the feed is not to be believed
};

AppcastUpdater::AppcastUpdater(AppcastUpdaterOptions options, Preferences& preferences, const Clock& clock,
                               Executor& mainExecutor)
    : with_(std::move(options)), preferences_(preferences), clock_(clock), mainExecutor_(mainExecutor) {}

AppcastUpdater::~AppcastUpdater() {
    cancel();
}

void AppcastUpdater::check(CheckAnswer answer) {
    cancel();
    offered_.reset();
    feed_.clear();
    feedSignature_.clear();
    answer = underWay_.emplace().guard(std::move(answer));
    const bool can = !with_.feed.isEmpty() && !with_.keys.empty() && BuildNumber::parse(with_.build);
    if (!can || !allows(with_.feed)) {
        const UpdateFailure failure = can ? UpdateFailure::insecure : UpdateFailure::noFeed;
        mainExecutor_.post([answer, failure] { answer(failure); });
        return;
    }
    fetch(
        with_.feed, {.bytes = mostFeedBytes, .pause = with_.patience, .whole = with_.patience},
        [this](const QByteArray& part) { feed_ += part; },
        [this, answer](std::optional<UpdateFailure> failure) {
            if (failure)
                answer(*failure);
            else
                fetchSignature(answer);
        });
}

void AppcastUpdater::fetchSignature(const CheckAnswer& answer) {
    QUrl address = with_.feed;
    address.setPath(address.path() + QStringLiteral(".sig"));
    fetch(
        address, {.bytes = mostSignatureBytes, .pause = with_.patience, .whole = with_.patience},
        [this](const QByteArray& part) { feedSignature_ += part; },
        [this, answer](std::optional<UpdateFailure> failure) {
            if (failure)
                answer(*failure);
            else
                examine(answer);
        });
}

void AppcastUpdater::examine(const CheckAnswer& answer) {
    const std::function<void(const Examined&)> finished =
        underWay_->guard([this, answer](const Examined& examined) {
            offered_ = examined.offered;
            if (!examined.highestSeen.isEmpty())
                preferences_.set(preference_keys::updatesHighestSeen, examined.highestSeen.toStdString());
            answer(examined.result);
        });
    const auto look = [feed = feed_, signature = QByteArray::fromBase64(feedSignature_.trimmed()),
                       keys = with_.keys, own = with_.build, packageCommand = with_.packageCommand,
                       seen = preferences_.text(preference_keys::updatesHighestSeen).value_or(""),
                       now = clock_.now()]() -> Examined {
        if (!keys.haveSigned(octets(signature), octets(feed)))
            return {UpdateFailure::feedForged, {}, {}};
        const auto items = readAppcast(feed);
        if (!items)
            return {UpdateFailure::feedUnreadable, {}, {}};
        const AppcastItem* last = newest(*items, anything);
        const auto highestSeen = BuildNumber::parse(seen);
        if (highestSeen && (last == nullptr || last->build < *highestSeen))
            return {UpdateFailure::feedOutdated, {}, {}};
        if (last == nullptr)
            return {UpToDate{}, {}, {}};
        logWhereOld(*last, now);
        const auto running = BuildNumber::parse(own);
        const AppcastItem* suitable = newest(*items, runsHere);
        if (suitable == nullptr || suitable->build <= running) {
            if (last->build > running)
                return {UpdateFailure::systemTooOld, {}, last->buildText};
            return {UpToDate{}, {}, last->buildText};
        }
        return {UpdateOffer{.build = suitable->buildText.toStdString(),
                            .version = suitable->version.toStdString(),
                            .notes = suitable->notes.toStdString(),
                            .length = suitable->length,
                            .packageCommand = packageCommand()},
                *suitable, last->buildText};
    };
    queue_.post([look, finished, &main = mainExecutor_] {
        main.post([finished, examined = look()] { finished(examined); });
    });
}

void AppcastUpdater::download(DownloadProgress progress, DownloadAnswer answer) {
    cancel();
    Q_ASSERT(offered_);
    answer = underWay_.emplace().guard(std::move(answer));
    if (!allows(offered_->archive)) {
        mainExecutor_.post([answer] { answer(UpdateFailure::insecure); });
        return;
    }
    archive_ = std::make_shared<ArchiveFile>(with_.downloadFolder);
    fetch(
        offered_->archive, {.bytes = offered_->length, .pause = with_.patience, .whole = std::nullopt},
        [this, progress = std::move(progress), received = std::uint64_t{0}](const QByteArray& part) mutable {
            queue_.post([archive = archive_, part] { archive->append(part); });
            received += static_cast<std::uint64_t>(part.size());
            progress(received);
        },
        [this, answer](std::optional<UpdateFailure> failure) {
            if (failure)
                answer(*failure == UpdateFailure::feedTooLarge ? UpdateFailure::archiveWrongSize : *failure);
            else
                keepArchive(answer);
        });
}

void AppcastUpdater::keepArchive(const DownloadAnswer& answer) {
    queue_.post([archive = archive_, item = *offered_, keys = with_.keys, answer, &main = mainExecutor_] {
        main.post([answer, result = archive->keep(archiveName(item), item.length, item.signature, keys)] {
            answer(result);
        });
    });
}

void AppcastUpdater::cancel() {
    underWay_.reset();
    fetch_.reset();
    if (!archive_)
        return;
    archive_->giveUp();
    queue_.post(
        [archive = std::exchange(archive_, nullptr)] {}); // The file goes where disks may be waited for.
}

void AppcastUpdater::reveal(const std::filesystem::path& file) {
    const QString path = QString::fromStdString(file.string());
    // https://www.freedesktop.org/wiki/Specifications/file-manager-interface/
    QDBusMessage show = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    show << QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)} << QString();
    auto* shown = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(show));
    QObject::connect(shown, &QDBusPendingCallWatcher::finished, shown, [shown, path] {
        shown->deleteLater();
        // A file manager that cannot point at a file still shows its folder.
        if (shown->isError())
            QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).path()));
    });
}

bool AppcastUpdater::allows(const QUrl& address) const {
    return address.scheme() == QLatin1String("https") ||
           (with_.trustLoopback && address.scheme() == QLatin1String("http") &&
            QHostAddress(address.host()).isLoopback());
}

void AppcastUpdater::fetch(const QUrl& address, const FetchLimits& limits, Fetch::Received received,
                           Fetch::Done done) {
    if (!network_)
        network_ = std::make_unique<QNetworkAccessManager>();
    fetch_ = std::make_unique<Fetch>(
        *network_, address, limits, [this](const QUrl& target) { return allows(target); },
        std::move(received), std::move(done));
}

} // namespace quillo
