// Against a real server, release_server.py, on this machine; with keys that are made here.
#include "linux/updates/AppcastUpdater.h"

#include "linux/MainThreadExecutor.h"
#include "support/CapturedLog.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/SignedReleases.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::namesIn;
using support::ReleaseEntry;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int patienceMilliseconds = 20'000;

/// Lets the event loop turn until that is so, or for too long.
template <class Condition>
bool waitFor(Condition condition, int milliseconds = patienceMilliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.hasExpired(milliseconds))
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
    }
    return true;
}

/// One server for all tests: it serves whatever is put into its folder.
class AppcastUpdaterTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        served = new support::TemporaryFolder;
        server = new QProcess;
        server->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        server->start(QStringLiteral(QUILLO_PYTHON), {QStringLiteral("-B"), QStringLiteral(RELEASE_SERVER),
                                                      QString::fromStdString(served->path().string())});
        ASSERT_TRUE(server->waitForReadyRead(patienceMilliseconds));
        base = "http://127.0.0.1:" + server->readLine().trimmed().toStdString() + "/";
    }

    static void TearDownTestSuite() {
        server->closeWriteChannel();
        server->waitForFinished(patienceMilliseconds);
        delete server;
        delete served;
    }

    AppcastUpdaterTest() {
        support::writeFile(served->path() / archiveName, archive);
        offer({entry()});
    }

    ~AppcastUpdaterTest() override {
        for (const std::string& name : namesIn(served->path()))
            std::filesystem::remove(served->path() / name);
    }

    ReleaseEntry entry() const {
        return {.url = base + archiveName, .length = archive.size(), .signature = key.sign(archive)};
    }

    void offer(const std::vector<ReleaseEntry>& releases) {
        support::publish(served->path(), support::feedOf(releases), key);
    }

    AppcastUpdaterOptions options(const std::string& feed = "appcast.xml") {
        return {.feed = QUrl(QString::fromStdString(base + feed)),
                .keys = support::keysOf(key.publicKey(), nextKey.publicKey()),
                .build = "10",
                .downloadFolder = [folder = downloads] { return QString::fromStdString(folder.string()); },
                .packageCommand = [] { return std::optional<std::string>(); },
                .patience = std::chrono::milliseconds(patienceMilliseconds),
                .trustLoopback = true};
    }

    Updater::CheckResult check(Updater& updater) {
        std::optional<Updater::CheckResult> result;
        updater.check([&](const Updater::CheckResult& answer) { result = answer; });
        EXPECT_FALSE(result) << "answered before the question was asked";
        EXPECT_TRUE(waitFor([&] { return result.has_value(); }));
        return result.value_or(Updater::CheckResult(UpToDate{}));
    }

    Updater::CheckResult check(const AppcastUpdaterOptions& with) {
        AppcastUpdater updater(with, preferences, clock, mainExecutor);
        return check(updater);
    }

    Updater::CheckResult checkFeed(const std::string& feed) { return check(options(feed)); }

    Updater::DownloadResult download(const AppcastUpdaterOptions& with) {
        AppcastUpdater updater(with, preferences, clock, mainExecutor);
        EXPECT_TRUE(std::holds_alternative<UpdateOffer>(check(updater)));
        return download(updater);
    }

    Updater::DownloadResult download(Updater& updater) {
        std::optional<Updater::DownloadResult> result;
        received.clear();
        updater.download([&](std::uint64_t bytes) { received.push_back(bytes); },
                         [&](const Updater::DownloadResult& answer) { result = answer; });
        EXPECT_TRUE(waitFor([&] { return result.has_value(); }));
        return result.value_or(Updater::DownloadResult(UpdateFailure::tooSlow));
    }

    /// Downloads the archive from another address on the same server.
    Updater::DownloadResult downloadFrom(const std::string& place) {
        ReleaseEntry moved = entry();
        moved.url = base + place;
        offer({moved});
        return download(options());
    }

    static support::TemporaryFolder* served;
    static QProcess* server;
    static std::string base;

    const std::string archiveName = "quillo-2.0.tar.gz";
    const std::string archive = std::string(300'000, 'q') + "uillo";
    const support::SigningKey key;
    const support::SigningKey nextKey;
    support::TemporaryFolder home;
    const std::filesystem::path downloads = home.path() / "Downloads";
    support::CapturedLog logged;
    support::InMemoryPreferences preferences;
    support::FixedClock clock{Instant::fromUnixSeconds(1772704800 + 86400)}; // a day after the release
    MainThreadExecutor mainExecutor;
    std::vector<std::uint64_t> received;
};

support::TemporaryFolder* AppcastUpdaterTest::served = nullptr;
QProcess* AppcastUpdaterTest::server = nullptr;
std::string AppcastUpdaterTest::base;

// Checking

TEST_F(AppcastUpdaterTest, OffersANewerRelease) {
    const UpdateOffer expected{.build = "20",
                               .version = "2.0",
                               .notes = "Faster.",
                               .length = archive.size(),
                               .packageCommand = std::nullopt};
    EXPECT_EQ(check(options()), Updater::CheckResult(expected));
    EXPECT_EQ(preferences.text(preference_keys::updatesHighestSeen), "20");
    EXPECT_THAT(namesIn(home.path()), IsEmpty()) << "looking writes no file";
    EXPECT_THAT(logged.lines(), IsEmpty());
}

TEST_F(AppcastUpdaterTest, OffersTheNewestThatRunsHere) {
    ReleaseEntry older = entry();
    older.build = "15";
    ReleaseEntry tooNew = entry();
    tooNew.build = "30";
    tooNew.minimumSystem = "999.0";
    ReleaseEntry fitting = entry();
    fitting.minimumSystem = "2.0";
    offer({older, tooNew, fitting, older});
    const auto result = check(options());
    ASSERT_TRUE(std::holds_alternative<UpdateOffer>(result));
    EXPECT_EQ(std::get<UpdateOffer>(result).build, "20");
    EXPECT_EQ(preferences.text(preference_keys::updatesHighestSeen), "30");
    offer({older, tooNew});
    AppcastUpdaterOptions newer = options();
    newer.build = "15";
    EXPECT_EQ(check(newer), Updater::CheckResult(UpdateFailure::systemTooOld));
}

TEST_F(AppcastUpdaterTest, OffersNeitherTheSameNorAnOlderRelease) {
    for (const char* running : {"20", "20.0", "20.1", "100"}) {
        AppcastUpdaterOptions with = options();
        with.build = running;
        EXPECT_EQ(check(with), Updater::CheckResult(UpToDate{})) << running;
    }
    offer({});
    preferences.remove(preference_keys::updatesHighestSeen);
    EXPECT_EQ(check(options()), Updater::CheckResult(UpToDate{}));
}

TEST_F(AppcastUpdaterTest, TellsWhoseTheFilesAre) {
    AppcastUpdaterOptions with = options();
    with.packageCommand = [] { return std::optional<std::string>("sudo snap refresh quillo"); };
    const auto result = check(with);
    ASSERT_TRUE(std::holds_alternative<UpdateOffer>(result));
    EXPECT_EQ(std::get<UpdateOffer>(result).packageCommand, "sudo snap refresh quillo");
}

TEST_F(AppcastUpdaterTest, TakesTheNextKeyToo) {
    support::publish(served->path(), support::feedOf(std::vector{entry()}), nextKey);
    EXPECT_TRUE(std::holds_alternative<UpdateOffer>(check(options())));
}

TEST_F(AppcastUpdaterTest, DoesNotLookWithoutFeedKeyOrBuild) {
    AppcastUpdaterOptions noFeed = options();
    noFeed.feed = QUrl();
    AppcastUpdaterOptions noKey = options();
    noKey.keys = support::keysOf("", "not a key");
    AppcastUpdaterOptions noBuild = options();
    noBuild.build.clear();
    for (const AppcastUpdaterOptions& with : {noFeed, noKey, noBuild})
        EXPECT_EQ(check(with), Updater::CheckResult(UpdateFailure::noFeed));
}

TEST_F(AppcastUpdaterTest, TalksToNobodyUnprotected) {
    AppcastUpdaterOptions with = options();
    with.trustLoopback = false;
    EXPECT_EQ(check(with), Updater::CheckResult(UpdateFailure::insecure));
}

TEST_F(AppcastUpdaterTest, FollowsARedirectionThatIsAllowed) {
    EXPECT_TRUE(std::holds_alternative<UpdateOffer>(checkFeed("moved/appcast.xml")));
}

TEST_F(AppcastUpdaterTest, RefusesARedirectionToAnUnprotectedPlace) {
    EXPECT_EQ(checkFeed("away/appcast.xml"), Updater::CheckResult(UpdateFailure::insecure));
}

TEST_F(AppcastUpdaterTest, RefusesATamperedFeed) {
    std::string feed = support::bytesOf(served->path() / "appcast.xml");
    feed.replace(feed.find("Faster"), 6, "Fatter");
    support::writeFile(served->path() / "appcast.xml", feed);
    EXPECT_EQ(check(options()), Updater::CheckResult(UpdateFailure::feedForged));
    EXPECT_EQ(preferences.text(preference_keys::updatesHighestSeen), std::nullopt);
}

TEST_F(AppcastUpdaterTest, RefusesAFeedOfAnotherKey) {
    support::publish(served->path(), support::feedOf(std::vector{entry()}), support::SigningKey());
    EXPECT_EQ(check(options()), Updater::CheckResult(UpdateFailure::feedForged));
}

TEST_F(AppcastUpdaterTest, RefusesASignatureThatIsNone) {
    for (const char* signature : {"", "AAAA", "no signature"}) {
        support::writeFile(served->path() / "appcast.xml.sig", signature);
        EXPECT_EQ(check(options()), Updater::CheckResult(UpdateFailure::feedForged)) << signature;
    }
    std::filesystem::remove(served->path() / "appcast.xml.sig");
    EXPECT_EQ(check(options()), Updater::CheckResult(UpdateFailure::unreachable));
}

TEST_F(AppcastUpdaterTest, RefusesATruncatedFeed) {
    EXPECT_EQ(checkFeed("cut/appcast.xml"), Updater::CheckResult(UpdateFailure::unreachable));
    const std::string feed = support::bytesOf(served->path() / "appcast.xml");
    support::writeFile(served->path() / "appcast.xml", feed.substr(0, feed.size() / 2));
    EXPECT_EQ(check(options()), Updater::CheckResult(UpdateFailure::feedForged));
}

TEST_F(AppcastUpdaterTest, RefusesASignedFeedThatIsNone) {
    support::publish(served->path(), "<html>Welcome</html>", key);
    EXPECT_EQ(check(options()), Updater::CheckResult(UpdateFailure::feedUnreadable));
}

TEST_F(AppcastUpdaterTest, RefusesAFeedThatKnowsLessThanOneBefore) {
    ASSERT_TRUE(std::holds_alternative<UpdateOffer>(check(options())));
    ReleaseEntry older = entry();
    older.build = "19.9";
    offer({older});
    EXPECT_EQ(check(options()), Updater::CheckResult(UpdateFailure::feedOutdated));
    offer({});
    EXPECT_EQ(check(options()), Updater::CheckResult(UpdateFailure::feedOutdated));
    EXPECT_EQ(preferences.text(preference_keys::updatesHighestSeen), "20");
}

TEST_F(AppcastUpdaterTest, RefusesAFeedWithoutAnEnd) {
    EXPECT_EQ(checkFeed("endless/appcast.xml"), Updater::CheckResult(UpdateFailure::feedTooLarge));
}

TEST_F(AppcastUpdaterTest, DoesNotWaitForASlowServer) {
    for (const char* feed : {"slow/appcast.xml", "silent/appcast.xml"}) {
        AppcastUpdaterOptions with = options(feed);
        with.patience = std::chrono::milliseconds(500);
        EXPECT_EQ(check(with), Updater::CheckResult(UpdateFailure::tooSlow)) << feed;
    }
}

TEST_F(AppcastUpdaterTest, UnpacksNothing) {
    EXPECT_EQ(checkFeed("zipped/appcast.xml"), Updater::CheckResult(UpdateFailure::feedForged));
}

TEST_F(AppcastUpdaterTest, TakesNoErrorForAFeed) {
    EXPECT_EQ(checkFeed("missing/appcast.xml"), Updater::CheckResult(UpdateFailure::unreachable));
    EXPECT_EQ(checkFeed("loop/appcast.xml"), Updater::CheckResult(UpdateFailure::unreachable));
    EXPECT_EQ(checkFeed("nothing"), Updater::CheckResult(UpdateFailure::unreachable));
    AppcastUpdaterOptions nobody = options();
    nobody.feed = QUrl(QStringLiteral("http://127.0.0.1:1/appcast.xml"));
    EXPECT_EQ(check(nobody), Updater::CheckResult(UpdateFailure::unreachable));
}

TEST_F(AppcastUpdaterTest, NotesAnOldFeedInTheLog) {
    clock.advance(70.0 * 86400);
    EXPECT_TRUE(std::holds_alternative<UpdateOffer>(check(options())));
    EXPECT_THAT(logged.lines(), ElementsAre("the newest release on the list is 71 days old"));
}

TEST_F(AppcastUpdaterTest, DoesNotAnswerWhatIsGivenUp) {
    bool answered = false;
    AppcastUpdater updater(options("slow/appcast.xml"), preferences, clock, mainExecutor);
    updater.check([&](const Updater::CheckResult&) { answered = true; });
    waitFor([] { return false; }, 300);
    updater.cancel();
    waitFor([] { return false; }, 300);
    EXPECT_FALSE(answered);
}

// Downloading

TEST_F(AppcastUpdaterTest, KeepsAVerifiedArchive) {
    const auto result = download(options());
    EXPECT_EQ(result, Updater::DownloadResult(downloads / archiveName));
    EXPECT_EQ(support::bytesOf(downloads / archiveName), archive);
    EXPECT_THAT(namesIn(downloads), ElementsAre(archiveName));
    ASSERT_FALSE(received.empty());
    EXPECT_TRUE(std::is_sorted(received.begin(), received.end()));
    EXPECT_EQ(received.back(), archive.size());
}

TEST_F(AppcastUpdaterTest, ReplacesNothingOfTheUsers) {
    std::filesystem::create_directories(downloads);
    support::writeFile(downloads / archiveName, "mine");
    EXPECT_EQ(download(options()), Updater::DownloadResult(downloads / "quillo-2.0 (2).tar.gz"));
    EXPECT_EQ(support::bytesOf(downloads / archiveName), "mine");
    EXPECT_EQ(support::bytesOf(downloads / "quillo-2.0 (2).tar.gz"), archive);
}

TEST_F(AppcastUpdaterTest, TakesNoOrdersFromAnAddress) {
    for (const std::string name : {".hidden", "-rf", "a%20b"}) {
        support::writeFile(served->path() / name, archive);
        ReleaseEntry odd = entry();
        odd.url = base + name;
        offer({odd});
        EXPECT_EQ(download(options()), Updater::DownloadResult(downloads / "quillo-20")) << name;
        std::filesystem::remove(downloads / "quillo-20");
    }
}

TEST_F(AppcastUpdaterTest, RefusesATamperedArchive) {
    std::string tampered = archive;
    tampered[1000] = 'Q';
    support::writeFile(served->path() / archiveName, tampered);
    EXPECT_EQ(download(options()), Updater::DownloadResult(UpdateFailure::archiveForged));
    EXPECT_THAT(namesIn(downloads), IsEmpty());
}

TEST_F(AppcastUpdaterTest, RefusesAnArchiveOfAnotherKey) {
    ReleaseEntry foreign = entry();
    foreign.signature = support::SigningKey().sign(archive);
    offer({foreign});
    EXPECT_EQ(download(options()), Updater::DownloadResult(UpdateFailure::archiveForged));
    EXPECT_THAT(namesIn(downloads), IsEmpty());
}

TEST_F(AppcastUpdaterTest, RefusesAnArchiveOfAnotherLength) {
    for (const std::string& other : {archive.substr(0, archive.size() - 1), archive + "!", std::string()}) {
        support::writeFile(served->path() / archiveName, other);
        EXPECT_EQ(download(options()), Updater::DownloadResult(UpdateFailure::archiveWrongSize))
            << other.size();
        EXPECT_THAT(namesIn(downloads), IsEmpty());
    }
}

TEST_F(AppcastUpdaterTest, RefusesAnArchiveWithoutAnEnd) {
    EXPECT_EQ(downloadFrom("endless/" + archiveName),
              Updater::DownloadResult(UpdateFailure::archiveWrongSize));
    EXPECT_THAT(namesIn(downloads), IsEmpty());
}

TEST_F(AppcastUpdaterTest, KeepsNothingOfADownloadThatBreaksOff) {
    EXPECT_EQ(downloadFrom("cut/" + archiveName), Updater::DownloadResult(UpdateFailure::unreachable));
    EXPECT_EQ(downloadFrom("missing/" + archiveName), Updater::DownloadResult(UpdateFailure::unreachable));
    EXPECT_EQ(downloadFrom("away/" + archiveName), Updater::DownloadResult(UpdateFailure::insecure));
    EXPECT_THAT(namesIn(downloads), IsEmpty());
}

TEST_F(AppcastUpdaterTest, RefusesAnArchiveInAnUnprotectedPlace) {
    ReleaseEntry elsewhere = entry();
    elsewhere.url = "http://192.0.2.1/" + archiveName;
    offer({elsewhere});
    EXPECT_EQ(download(options()), Updater::DownloadResult(UpdateFailure::insecure));
}

TEST_F(AppcastUpdaterTest, DoesNotWaitForASilentDownload) {
    ReleaseEntry silent = entry();
    silent.url = base + "silent/" + archiveName;
    offer({silent});
    AppcastUpdaterOptions with = options();
    with.patience = std::chrono::milliseconds(1500);
    EXPECT_EQ(download(with), Updater::DownloadResult(UpdateFailure::tooSlow));
    EXPECT_THAT(namesIn(downloads), IsEmpty());
}

TEST_F(AppcastUpdaterTest, SaysWhenItCannotWrite) {
    support::writeFile(downloads, "a file where the folder should be");
    EXPECT_EQ(download(options()), Updater::DownloadResult(UpdateFailure::archiveNotWritable));
}

TEST_F(AppcastUpdaterTest, LeavesNothingOfADownloadThatIsGivenUp) {
    ReleaseEntry silent = entry();
    silent.url = base + "silent/" + archiveName;
    offer({silent});
    bool answered = false;
    {
        AppcastUpdater updater(options(), preferences, clock, mainExecutor);
        ASSERT_TRUE(std::holds_alternative<UpdateOffer>(check(updater)));
        std::uint64_t bytes = 0;
        updater.download([&](std::uint64_t soFar) { bytes = soFar; },
                         [&](const Updater::DownloadResult&) { answered = true; });
        ASSERT_TRUE(waitFor([&] { return bytes >= archive.size() / 2; }));
        updater.cancel();
        waitFor([] { return false; }, 100);
    }
    EXPECT_FALSE(answered);
    EXPECT_THAT(namesIn(downloads), IsEmpty());
}

TEST_F(AppcastUpdaterTest, CanTryAgain) {
    std::filesystem::rename(served->path() / archiveName, served->path() / "away.tar.gz");
    AppcastUpdater updater(options(), preferences, clock, mainExecutor);
    ASSERT_TRUE(std::holds_alternative<UpdateOffer>(check(updater)));
    EXPECT_EQ(download(updater), Updater::DownloadResult(UpdateFailure::unreachable));
    std::filesystem::rename(served->path() / "away.tar.gz", served->path() / archiveName);
    EXPECT_EQ(download(updater), Updater::DownloadResult(downloads / archiveName));
}

} // namespace
} // namespace quillo

int main(int count, char** arguments) {
    QCoreApplication application(count, arguments);
    testing::InitGoogleMock(&count, arguments);
    return RUN_ALL_TESTS();
}
