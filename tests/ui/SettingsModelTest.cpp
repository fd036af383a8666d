#include "ui/settings/SettingsModel.h"

#include "ListWorld.h"
#include "SyncWorld.h"
#include "base/Product.h"
#include "support/CapturedLog.h"
#include "support/ManualLoginItem.h"
#include "support/RecordingHotKeyCenter.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTranslator>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillo {
namespace {

using support::Task;

/// A string table that leads elsewhere.
class OtherWebsite : public QTranslator {
public:
    QString translate(const char*, const char* key, const char*, int) const override {
        return QLatin1String(key) == QLatin1String("WEBSITE_URL") ? QStringLiteral("https://example.org/fr")
                                                                  : QString();
    }
    bool isEmpty() const override { return false; }
};

class SettingsModelTest : public testing::Test {
protected:
    SettingsModelDependencies dependencies() {
        return {
            .preferences = world.preferences,
            .store = world.store,
            .loginItem = loginItem,
            .recorder = {hotKeys, center, [](std::uint32_t) { return std::nullopt; }, [] {}},
            .sync = sync.dependencies(),
            .statsStore = [this]() -> StatsStore& { return stats; },
            .actions = actions,
            .automaticallyChecksForUpdates = [this] { return automatic; },
            .setAutomaticallyChecksForUpdates = [this](bool value) { automatic = value; },
            .openUrl = [this](const std::string& address) { opened.push_back(address); },
        };
    }

    /// The window is shown, and the desktop has answered.
    void show() {
        model.refresh();
        loginItem.answer();
    }

    std::optional<bool> stored(std::string_view key) const { return world.preferences.boolean(key); }

    support::ListWorld world;
    support::SyncWorld sync;
    support::ManualLoginItem loginItem;
    support::RecordingHotKeyCenter center;
    HotKeyManager hotKeys{world.preferences, center, world.mainExecutor};
    StatsStore stats{{world.preferences, world.clock, world.calendar, world.notifications}};
    bool automatic = false;
    std::vector<std::string> chosen;
    const MenuActions actions{
        .quickAdd = [] {},
        .exportMarkdown = [this] { chosen.emplace_back("markdown"); },
        .exportJson = [this] { chosen.emplace_back("json"); },
        .openStatistics = [](const std::string&) {},
        .openSettings = [](const std::string&) {},
        .checkForUpdates = [this] { chosen.emplace_back("check"); },
        .quit = [] {},
    };
    std::vector<std::string> opened;
    SettingsModel model{dependencies()};
};

TEST_F(SettingsModelTest, ShowsTheDefaultsWhereNothingIsStored) {
    show();
    EXPECT_FALSE(model.launchAtLogin());
    EXPECT_TRUE(model.cloudSync());
    EXPECT_TRUE(model.statisticsEnabled());
    EXPECT_FALSE(model.automaticUpdates());
    EXPECT_FALSE(model.anyDone());
    EXPECT_EQ(world.preferences.size(), 0U);
}

TEST_F(SettingsModelTest, ReadsTheFlagsAnewWheneverItIsShown) {
    show();
    world.preferences.set(preference_keys::cloudSync, false);
    world.preferences.set(preference_keys::statsEnabled, false);
    EXPECT_TRUE(model.cloudSync());
    show();
    EXPECT_FALSE(model.cloudSync());
    EXPECT_FALSE(model.statisticsEnabled());
}

TEST_F(SettingsModelTest, StartsAtLoginFromTheChangeOn) {
    show();
    model.setLaunchAtLogin(true);
    EXPECT_TRUE(model.launchAtLogin());
    loginItem.answer();
    EXPECT_TRUE(model.launchAtLogin());
    EXPECT_EQ(stored(preference_keys::launchAtLogin), true);
    model.setLaunchAtLogin(false);
    loginItem.answer();
    EXPECT_FALSE(model.launchAtLogin());
    EXPECT_EQ(stored(preference_keys::launchAtLogin), false);
    EXPECT_EQ(loginItem.changes, (std::vector<bool>{true, false}));
}

TEST_F(SettingsModelTest, WhatTheDesktopDoesNotLetHappenGoesBack) {
    const support::CapturedLog log;
    show();
    loginItem.failing = true;
    int changes = 0;
    QObject::connect(&model, &SettingsModel::launchAtLoginChanged, &model, [&] { ++changes; });
    model.setLaunchAtLogin(true);
    loginItem.answer();
    EXPECT_FALSE(model.launchAtLogin());
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(stored(preference_keys::launchAtLogin), false);
    EXPECT_EQ(log.lines(), std::vector<std::string>{"starting at login stays as it is: the test says so"});
    EXPECT_EQ(loginItem.changes, std::vector<bool>{true}) << "going back is not another change";
}

TEST_F(SettingsModelTest, AnEarlierFailureDoesNotUndoALaterChange) {
    const support::CapturedLog log;
    show();
    loginItem.failing = true;
    model.setLaunchAtLogin(true);
    model.setLaunchAtLogin(false);
    model.setLaunchAtLogin(true);
    loginItem.answer();
    EXPECT_FALSE(model.launchAtLogin());
    EXPECT_EQ(stored(preference_keys::launchAtLogin), false);
}

TEST_F(SettingsModelTest, ShowsHowItReallyIsAtLogin) {
    world.preferences.set(preference_keys::launchAtLogin, true);
    model.refresh();
    EXPECT_TRUE(model.launchAtLogin());
    loginItem.answer();
    EXPECT_FALSE(model.launchAtLogin());
    EXPECT_EQ(stored(preference_keys::launchAtLogin), false);
}

TEST_F(SettingsModelTest, BelievesWhatIsStoredWhereTheDesktopDoesNotTell) {
    world.preferences.set(preference_keys::launchAtLogin, true);
    loginItem.state.reset();
    show();
    EXPECT_TRUE(model.launchAtLogin());
}

TEST_F(SettingsModelTest, AnAnswerThatIsOlderThanAChangeCountsNoMore) {
    model.refresh();
    model.setLaunchAtLogin(true);
    loginItem.state = false;
    loginItem.answer();
    EXPECT_TRUE(model.launchAtLogin());
}

TEST_F(SettingsModelTest, TurningSyncOnPutsTheListIntoTheCloudAtOnce) {
    world.preferences.set(preference_keys::cloudSync, false);
    world.add({Task("Buy milk")});
    EXPECT_TRUE(world.store.drain());
    ASSERT_EQ(world.cloud.size(), 0U);
    show();
    model.setCloudSync(true);
    EXPECT_TRUE(world.store.drain());
    EXPECT_EQ(stored(preference_keys::cloudSync), true);
    EXPECT_EQ(world.cloud.real(preference_keys::itemsStamp), world.store.lastLocalStamp().get());
    const auto list = world.cloud.data(preference_keys::items);
    ASSERT_TRUE(list);

    model.setCloudSync(false);
    world.add({Task("Call mom")});
    EXPECT_TRUE(world.store.drain());
    EXPECT_EQ(stored(preference_keys::cloudSync), false);
    EXPECT_EQ(world.cloud.data(preference_keys::items)->bytes(), list->bytes());
}

TEST_F(SettingsModelTest, ClearsDoneTasksWhileThereAreSome) {
    int changes = 0;
    QObject::connect(&model, &SettingsModel::anyDoneChanged, &model, [&] { ++changes; });
    world.add({Task("Buy milk").done(), Task("Call mom")});
    EXPECT_TRUE(model.anyDone());
    EXPECT_GT(changes, 0);
    model.clearCompleted();
    EXPECT_FALSE(model.anyDone());
    EXPECT_EQ(world.store.items().size(), 1U);
}

TEST_F(SettingsModelTest, SwitchesTheStatisticsAndResetsThem) {
    show();
    stats.recordCompletion(Task("Buy milk"), world.clock.now());
    ASSERT_EQ(stats.lifetimeCompletions().get(), 1);
    model.setStatisticsEnabled(false);
    EXPECT_FALSE(stats.isEnabled());
    stats.recordCompletion(Task("Call mom"), world.clock.now());
    EXPECT_EQ(stats.lifetimeCompletions().get(), 1);
    model.resetStatistics();
    EXPECT_EQ(stats.lifetimeCompletions().get(), 0);
    EXPECT_FALSE(stats.isEnabled());
}

TEST_F(SettingsModelTest, TheButtonsDoWhatTheySay) {
    model.exportMarkdown();
    model.exportJson();
    model.checkForUpdates();
    EXPECT_EQ(chosen, (std::vector<std::string>{"markdown", "json", "check"}));
}

TEST_F(SettingsModelTest, SwitchesLookingForUpdates) {
    automatic = true;
    show();
    EXPECT_TRUE(model.automaticUpdates());
    model.setAutomaticUpdates(false);
    EXPECT_FALSE(automatic);
    EXPECT_FALSE(model.automaticUpdates());
}

TEST_F(SettingsModelTest, LeadsToTheMakers) {
    model.visitWebsite();
    model.contactSupport();
    EXPECT_EQ(opened,
              (std::vector<std::string>{product::website, std::string("mailto:") + product::supportAddress}));
}

TEST_F(SettingsModelTest, TheStringTableMayLeadToAnotherWebsite) {
    OtherWebsite translator;
    QCoreApplication::installTranslator(&translator);
    model.visitWebsite();
    QCoreApplication::removeTranslator(&translator);
    EXPECT_EQ(opened, std::vector<std::string>{"https://example.org/fr"});
}

} // namespace
} // namespace quillo
