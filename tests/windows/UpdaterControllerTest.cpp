#include "windows/UpdaterController.h"

#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/ManualWallClockTimer.h"
#include "support/ScriptedUpdater.h"

#include <gmock/gmock.h>

#include <optional>

namespace quillo {
namespace {

constexpr double hour = 3600;
constexpr double day = 24 * hour;

class UpdaterControllerTest : public testing::Test {
protected:
    void turnOn() { preferences.set(preference_keys::updatesAutomatic, true); }

    /// How long it is until the timer fires; absent where it is not armed.
    std::optional<double> wait() const {
        const auto armed = timer.armed();
        return armed ? std::optional(*armed - clock.now()) : std::nullopt;
    }

    /// Lets the clock come to where the timer fires.
    void come() {
        clock.set(timer.armed().value());
        timer.look();
    }

    const UpdateOffer offer{
        .build = "20", .version = "2.0", .notes = {}, .length = 1000, .packageCommand = std::nullopt};
    support::ScriptedUpdater updater;
    support::InMemoryPreferences preferences;
    support::FixedClock clock;
    support::ManualWallClockTimer timer{clock};
    int shown = 0;
    int offered = 0;
    int hidden = 0;
    UpdaterController controller{{.updater = updater,
                                  .preferences = preferences,
                                  .clock = clock,
                                  .timer = timer,
                                  .showWindow = [this] { ++shown; },
                                  .offerWindow = [this] { ++offered; },
                                  .hideWindow = [this] { ++hidden; },
                                  .version = "1.0"}};
};

TEST_F(UpdaterControllerTest, IsOffUntilTheUserTurnsItOn) {
    controller.start();
    EXPECT_FALSE(controller.automaticallyChecksForUpdates());
    EXPECT_EQ(wait(), std::nullopt);
    EXPECT_EQ(preferences.writes(), 0);
}

TEST_F(UpdaterControllerTest, RemembersWhetherItIsOn) {
    controller.setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(controller.automaticallyChecksForUpdates());
    EXPECT_EQ(preferences.boolean(preference_keys::updatesAutomatic), true);
    EXPECT_NE(wait(), std::nullopt);
    controller.setAutomaticallyChecksForUpdates(false);
    EXPECT_FALSE(controller.automaticallyChecksForUpdates());
    EXPECT_EQ(wait(), std::nullopt);
}

TEST_F(UpdaterControllerTest, LeavesTheFirstSecondsToOthers) {
    turnOn();
    controller.start();
    EXPECT_EQ(updater.checks, 0);
    EXPECT_GE(wait().value(), 30);
    EXPECT_LE(wait().value(), 300);
}

TEST_F(UpdaterControllerTest, LooksOnceADay) {
    turnOn();
    controller.start();
    come();
    EXPECT_EQ(updater.checks, 1);
    EXPECT_GE(wait().value(), day);
    EXPECT_LE(wait().value(), day + hour);
    come();
    EXPECT_EQ(updater.checks, 2);
}

TEST_F(UpdaterControllerTest, CountsTheDayAcrossRuns) {
    turnOn();
    preferences.set(preference_keys::updatesLastCheck, clock.now().unixSeconds() - 20 * hour);
    controller.start();
    EXPECT_GE(wait().value(), 4 * hour);
    EXPECT_LE(wait().value(), 5 * hour);
}

TEST_F(UpdaterControllerTest, DoesNotWaitForAClockThatWasWrong) {
    turnOn();
    preferences.set(preference_keys::updatesLastCheck, clock.now().unixSeconds() + 1000 * day);
    controller.start();
    EXPECT_LE(wait().value(), 300);
    clock.advance(-500 * day);
    timer.tellOfClockChange();
    EXPECT_LE(wait().value(), 300);
}

TEST_F(UpdaterControllerTest, ShowsWhatItFindsByItself) {
    turnOn();
    controller.start();
    come();
    EXPECT_EQ(offered, 0);
    updater.answerCheck(offer);
    EXPECT_EQ(offered, 1);
    EXPECT_EQ(shown, 0) << "the keyboard stays where it is";
    EXPECT_EQ(controller.model().stage(), UpdateModel::Available);
}

TEST_F(UpdaterControllerTest, SaysNothingOfWhatGoesWrongByItself) {
    turnOn();
    controller.start();
    come();
    updater.answerCheck(UpdateFailure::unreachable);
    come();
    updater.answerCheck(UpToDate{});
    EXPECT_EQ(offered, 0);
    EXPECT_EQ(shown, 0);
    EXPECT_EQ(controller.model().stage(), UpdateModel::Idle);
}

TEST_F(UpdaterControllerTest, OffersASkippedReleaseOnlyWhenAsked) {
    turnOn();
    controller.start();
    come();
    updater.answerCheck(offer);
    controller.model().skip();
    EXPECT_EQ(hidden, 1);
    come();
    updater.answerCheck(offer);
    EXPECT_EQ(offered, 1);
    controller.checkForUpdates();
    updater.answerCheck(offer);
    EXPECT_EQ(controller.model().stage(), UpdateModel::Available);
    controller.model().dismiss();
    come();
    UpdateOffer later = offer;
    later.build = "21";
    updater.answerCheck(later);
    EXPECT_EQ(controller.model().stage(), UpdateModel::Available);
}

TEST_F(UpdaterControllerTest, ShowsThatItLooksWhenAsked) {
    controller.start();
    controller.checkForUpdates();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(controller.model().stage(), UpdateModel::Checking);
    EXPECT_EQ(preferences.real(preference_keys::updatesLastCheck), clock.now().unixSeconds());
    EXPECT_EQ(wait(), std::nullopt) << "asking once does not turn it on";
    controller.checkForUpdates();
    EXPECT_EQ(shown, 2) << "the window comes to the front again";
    EXPECT_EQ(updater.checks, 1);
}

TEST_F(UpdaterControllerTest, AnswersTheUserWhenItWasLookingByItself) {
    turnOn();
    controller.start();
    come();
    controller.checkForUpdates();
    updater.answerCheck(UpToDate{});
    EXPECT_EQ(controller.model().stage(), UpdateModel::UpToDate);
    EXPECT_EQ(shown, 1);
}

TEST_F(UpdaterControllerTest, DoesNotDisturbTheUserByLooking) {
    turnOn();
    controller.start();
    controller.checkForUpdates();
    updater.answerCheck(offer);
    controller.model().download();
    come();
    EXPECT_TRUE(updater.isDownloading());
    EXPECT_EQ(updater.checks, 1);
}

} // namespace
} // namespace quillo
