#include "ui/updates/UpdateModel.h"

#include "support/ScriptedUpdater.h"

#include <gmock/gmock.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QSet>
#include <QSignalSpy>
#include <string>

namespace quillo {
namespace {

using testing::ElementsAre;

class UpdateModelTest : public testing::Test {
protected:
    const UpdateOffer offer{.build = "20",
                            .version = "2.0",
                            .notes = "Faster.",
                            .length = 3'000'000,
                            .packageCommand = std::nullopt};
    const std::filesystem::path archive = "/home/olo/Downloads/quillo-2.0.tar.gz";

    void offerOne() {
        model.check();
        updater.answerCheck(offer);
    }

    support::ScriptedUpdater updater;
    UpdateModel model{updater, "1.0"};
    QSignalSpy finished{&model, &UpdateModel::finished};
};

TEST_F(UpdateModelTest, IsIdleAndSaysNothingAtFirst) {
    EXPECT_EQ(model.stage(), UpdateModel::Idle);
    EXPECT_TRUE(model.heading().isEmpty());
    EXPECT_TRUE(model.message().isEmpty());
    EXPECT_EQ(updater.checks, 0);
}

TEST_F(UpdateModelTest, ChecksOnceHoweverOftenItIsAsked) {
    model.check();
    model.check();
    EXPECT_EQ(model.stage(), UpdateModel::Checking);
    EXPECT_EQ(updater.checks, 1);
    updater.answerCheck(UpToDate{});
    EXPECT_EQ(model.stage(), UpdateModel::UpToDate);
    EXPECT_TRUE(model.message().contains(QStringLiteral("1.0")));
    model.check();
    EXPECT_EQ(updater.checks, 2);
}

TEST_F(UpdateModelTest, OffersWhatIsNewer) {
    offerOne();
    EXPECT_EQ(model.stage(), UpdateModel::Available);
    EXPECT_TRUE(model.downloadable());
    EXPECT_TRUE(model.message().contains(QStringLiteral("2.0")));
    EXPECT_TRUE(model.message().contains(QStringLiteral("1.0")));
    EXPECT_EQ(model.notes(), QStringLiteral("Faster."));
    model.check();
    EXPECT_EQ(updater.checks, 1) << "what is offered stays";
}

TEST_F(UpdateModelTest, MakesPlainTextOfNotes) {
    UpdateOffer html = offer;
    html.notes = "<h2>New</h2><ul><li>Fast &amp; small</li><li>Calm</li></ul><img src=\"http://x/y.png\">";
    model.offer(html);
    EXPECT_TRUE(model.notes().startsWith(QStringLiteral("New\n• Fast & small\n• Calm")))
        << model.notes().toStdString();
    EXPECT_FALSE(model.notes().contains(QLatin1Char('<')));
}

TEST_F(UpdateModelTest, LeavesTheFilesOfPackageManagersAlone) {
    UpdateOffer managed = offer;
    managed.packageCommand = "flatpak update org.quillo.Quillo";
    model.offer(managed);
    EXPECT_FALSE(model.downloadable());
    EXPECT_EQ(model.packageCommand(), QStringLiteral("flatpak update org.quillo.Quillo"));
    model.download();
    EXPECT_EQ(updater.downloads, 0);

    managed.packageCommand = "";
    model.offer(managed);
    EXPECT_FALSE(model.downloadable());
    EXPECT_TRUE(model.message().contains(QStringLiteral("package manager")));
}

TEST_F(UpdateModelTest, DownloadsAndShowsTheFile) {
    offerOne();
    model.download();
    EXPECT_EQ(model.stage(), UpdateModel::Downloading);
    EXPECT_EQ(model.progress(), 0);
    updater.tellProgress(1'500'000);
    EXPECT_EQ(model.progress(), 0.5);
    EXPECT_EQ(model.progressText(), QStringLiteral("1.5 MB of 3.0 MB"));
    updater.answerDownload(archive);
    EXPECT_EQ(model.stage(), UpdateModel::Downloaded);
    EXPECT_TRUE(model.message().contains(QStringLiteral("quillo-2.0.tar.gz")));
    EXPECT_THAT(updater.revealed, ElementsAre(archive));
    model.reveal();
    EXPECT_THAT(updater.revealed, ElementsAre(archive, archive));
}

TEST_F(UpdateModelTest, GivesUpWhatIsUnderWayWhenItIsDismissed) {
    model.check();
    model.dismiss();
    EXPECT_FALSE(updater.isChecking());
    EXPECT_EQ(model.stage(), UpdateModel::Idle);
    offerOne();
    model.download();
    model.dismiss();
    EXPECT_FALSE(updater.isDownloading());
    EXPECT_EQ(finished.count(), 2);
    model.dismiss();
    EXPECT_EQ(finished.count(), 2) << "there was nothing to dismiss";
}

TEST_F(UpdateModelTest, SkipsARelease) {
    std::string skipped;
    QObject::connect(&model, &UpdateModel::skipped, &model,
                     [&](const std::string& build) { skipped = build; });
    offerOne();
    model.skip();
    EXPECT_EQ(skipped, "20");
    EXPECT_EQ(model.stage(), UpdateModel::Idle);
    EXPECT_EQ(finished.count(), 1);
}

TEST_F(UpdateModelTest, RetriesWhatFailed) {
    model.check();
    updater.answerCheck(UpdateFailure::unreachable);
    EXPECT_EQ(model.stage(), UpdateModel::Failed);
    EXPECT_TRUE(model.retriable());
    model.retry();
    EXPECT_EQ(updater.checks, 2);
    updater.answerCheck(offer);
    model.download();
    updater.tellProgress(1'500'000);
    updater.answerDownload(UpdateFailure::archiveForged);
    EXPECT_EQ(model.heading(), QStringLiteral("The update could not be downloaded"));
    model.retry();
    EXPECT_EQ(updater.downloads, 2);
    EXPECT_EQ(model.progress(), 0);
}

TEST_F(UpdateModelTest, HasItsOwnWordsForEveryFailure) {
    QSet<QString> words;
    constexpr int failures = static_cast<int>(UpdateFailure::archiveNotWritable) + 1;
    for (int number = 0; number < failures; ++number) {
        model.check();
        updater.answerCheck(static_cast<UpdateFailure>(number));
        EXPECT_FALSE(model.heading().isEmpty()) << number;
        EXPECT_TRUE(model.message().endsWith(QLatin1Char('.')) || model.message().endsWith(QLatin1Char('?')))
            << model.message().toStdString();
        words.insert(model.message());
    }
    EXPECT_EQ(words.size(), failures);
}

TEST_F(UpdateModelTest, DoesNotRetryWhatCannotSucceed) {
    for (const UpdateFailure failure : {UpdateFailure::noFeed, UpdateFailure::systemTooOld}) {
        model.check();
        updater.answerCheck(failure);
        EXPECT_FALSE(model.retriable());
        model.retry();
        EXPECT_FALSE(updater.isChecking());
    }
}

TEST_F(UpdateModelTest, CopiesACommand) {
    model.copy(QStringLiteral("sudo snap refresh quillo"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("sudo snap refresh quillo"));
}

TEST(UpdateModel, IsNotAnsweredAfterItsEnd) {
    support::ScriptedUpdater updater;
    {
        UpdateModel model(updater, "1.0");
        model.check();
    }
    EXPECT_FALSE(updater.isChecking());
}

} // namespace
} // namespace quillo
