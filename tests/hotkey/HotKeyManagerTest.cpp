#include "hotkey/HotKeyManager.h"

#include "base/ManualExecutor.h"
#include "hotkey/DisplayString.h"
#include "support/CapturedLog.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/RecordingHotKeyCenter.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillo {
namespace {

using Registration = support::RecordingHotKeyCenter::Registration;
using Registrations = std::vector<Registration>;

constexpr HotKeyConfig standard{17, 0x1900};
constexpr HotKeyConfig commandShiftK{40, 0x300};
constexpr const char* key = "Quillo.hotkey.v1";

class HotKeyManagerTest : public testing::Test {
protected:
    HotKeyManager& manager() {
        if (!manager_) {
            manager_ = std::make_unique<HotKeyManager>(preferences, center, executor);
            manager_->onTrigger = [this] { ++triggered; };
        }
        return *manager_;
    }

    void endManager() { manager_.reset(); }

    /// With whatever is posted to the main thread.
    void press() {
        center.press();
        executor.run();
    }

    HotKeyStatus sendToHandler(const HotKeyEvent* event) {
        const HotKeyStatus status = center.handlers.begin()->second(event);
        executor.run();
        return status;
    }

    Registrations registrations() const {
        Registrations all;
        for (const auto& [reference, registration] : center.registrations)
            all.push_back(registration);
        return all;
    }

    std::optional<Data> stored() const { return preferences.data(key); }

    support::InMemoryPreferences preferences;
    support::RecordingHotKeyCenter center;
    ManualExecutor executor;
    int triggered = 0;

private:
    std::unique_ptr<HotKeyManager> manager_;
};

TEST_F(HotKeyManagerTest, StartsWithTheDefaultAndNothingRegistered) {
    EXPECT_EQ(manager().current().get(), standard);
    EXPECT_EQ(displayString(manager().current().get()), "⌃⌥⌘T");
    EXPECT_FALSE(manager().load());
    EXPECT_FALSE(manager().isRegistered());
    EXPECT_TRUE(center.handlers.empty());
    EXPECT_TRUE(registrations().empty());
    EXPECT_EQ(preferences.writes(), 0);
}

TEST_F(HotKeyManagerTest, RegistersTheDefaultWhereNothingIsStored) {
    manager().registerHotKey(manager().current().get());
    EXPECT_EQ(registrations(), (Registrations{{standard, {0x514C4C4F, 1}}}));
    EXPECT_EQ(center.handlers.size(), 1U);
    EXPECT_TRUE(manager().isRegistered());
    EXPECT_EQ(preferences.writes(), 0);
}

TEST_F(HotKeyManagerTest, StartsWithWhatIsStored) {
    preferences.set(key, Data(R"({"keyCode":40,"modifiers":768})"));
    EXPECT_EQ(manager().current().get(), commandShiftK);
    EXPECT_EQ(manager().load(), commandShiftK);
}

TEST_F(HotKeyManagerTest, TakesTheDefaultForDamagedDataAndLeavesThatUntilTheNextSave) {
    const std::vector<Value> damaged = {Data(std::string("{\"keyCode\":40")), Data(),
                                        std::string(R"({"keyCode":40,"modifiers":768})"), std::int64_t{40}};
    for (const Value& value : damaged) {
        preferences.set(key, value);
        endManager();
        EXPECT_EQ(manager().current().get(), standard);
        EXPECT_FALSE(manager().load());
        manager().registerHotKey(manager().current().get());
        EXPECT_EQ(preferences.value(key), value);
        manager().save(commandShiftK);
        EXPECT_EQ(manager().load(), commandShiftK);
    }
}

TEST_F(HotKeyManagerTest, StoresDataThatTheNextStartReads) {
    manager().save(commandShiftK);
    ASSERT_TRUE(stored());
    EXPECT_EQ(stored()->bytes(), R"({"keyCode":40,"modifiers":768})");
    EXPECT_EQ(manager().current().get(), standard) << "saving alone makes nothing current";
    endManager();
    EXPECT_EQ(manager().current().get(), commandShiftK);
}

TEST_F(HotKeyManagerTest, LeavesOneRegistrationAndOneHandlerHoweverOftenItRegisters) {
    manager().registerHotKey(standard);
    manager().registerHotKey(standard);
    manager().registerHotKey(commandShiftK);
    EXPECT_EQ(registrations(), (Registrations{{commandShiftK, quickAddHotKey}}));
    EXPECT_EQ(center.handlers.size(), 1U);
    press();
    EXPECT_EQ(triggered, 1);
}

TEST_F(HotKeyManagerTest, AppliesAChosenShortcutAtOnce) {
    manager().registerHotKey(standard);
    std::vector<HotKeyConfig> announced;
    const Connection connection =
        manager().current().observe([&](const HotKeyConfig& config) { announced.push_back(config); });
    manager().apply(commandShiftK);
    EXPECT_EQ(announced, std::vector{commandShiftK});
    EXPECT_EQ(registrations(), (Registrations{{commandShiftK, quickAddHotKey}}));
    EXPECT_EQ(stored()->bytes(), R"({"keyCode":40,"modifiers":768})");
}

TEST_F(HotKeyManagerTest, KeepsARefusedShortcutCurrentAndSaysNothing) {
    const support::CapturedLog log;
    manager().registerHotKey(standard);
    center.status = HotKeyStatus::taken;
    manager().apply(commandShiftK);
    EXPECT_EQ(manager().current().get(), commandShiftK);
    EXPECT_EQ(stored()->bytes(), R"({"keyCode":40,"modifiers":768})");
    EXPECT_FALSE(manager().isRegistered());
    EXPECT_TRUE(registrations().empty());
    EXPECT_EQ(center.handlers.size(), 1U) << "the handler stays";
    EXPECT_EQ(center.unregistrations, 1);
    EXPECT_TRUE(log.lines().empty());

    center.status = HotKeyStatus::noError;
    manager().registerHotKey(commandShiftK);
    EXPECT_TRUE(manager().isRegistered());
    EXPECT_EQ(center.handlers.size(), 1U);
    EXPECT_EQ(center.unregistrations, 1) << "what was refused is not given back";
}

TEST_F(HotKeyManagerTest, IsRegisteredOnceTheDesktopHasSaidSo) {
    center.holding = true;
    manager().registerHotKey(standard);
    EXPECT_FALSE(manager().isRegistered());
    center.answerAll();
    EXPECT_TRUE(manager().isRegistered());

    center.status = HotKeyStatus::unavailable;
    manager().registerHotKey(commandShiftK);
    EXPECT_FALSE(manager().isRegistered());
    center.answerAll();
    EXPECT_FALSE(manager().isRegistered());
    EXPECT_TRUE(registrations().empty());
}

TEST_F(HotKeyManagerTest, ReplacesAShortcutThatTheDesktopStillThinksAbout) {
    center.holding = true;
    manager().registerHotKey(standard);
    manager().registerHotKey(commandShiftK);
    center.answerAll();
    EXPECT_EQ(registrations(), (Registrations{{commandShiftK, quickAddHotKey}}));
    EXPECT_TRUE(manager().isRegistered());
}

TEST_F(HotKeyManagerTest, GivesTheShortcutBackWhenAsked) {
    manager().unregister();
    EXPECT_EQ(center.unregistrations, 0);
    manager().registerHotKey(standard);
    manager().unregister();
    EXPECT_TRUE(registrations().empty());
    EXPECT_TRUE(center.handlers.empty());
    EXPECT_FALSE(manager().isRegistered());
}

TEST_F(HotKeyManagerTest, TriggersLaterOnTheMainThread) {
    manager().registerHotKey(standard);
    center.press();
    EXPECT_EQ(triggered, 0);
    executor.run();
    EXPECT_EQ(triggered, 1);
}

TEST_F(HotKeyManagerTest, TellsTheActivationTokenWhileItTriggers) {
    std::string token = "none";
    manager().onTrigger = [&] { token = manager().activationToken(); };
    manager().registerHotKey(standard);
    center.activationToken = "token-1";
    press();
    EXPECT_EQ(token, "token-1");
    EXPECT_EQ(manager().activationToken(), "");
    center.activationToken.clear();
    press();
    EXPECT_EQ(token, "");
}

TEST_F(HotKeyManagerTest, NeedsNoTrigger) {
    manager().registerHotKey(standard);
    manager().onTrigger = nullptr;
    press();
    EXPECT_EQ(triggered, 0);
}

TEST_F(HotKeyManagerTest, CallsTheTriggerThatIsSetWhenItsTurnComes) {
    manager().registerHotKey(standard);
    int other = 0;
    center.press();
    manager().onTrigger = [&] { ++other; };
    executor.run();
    EXPECT_EQ(triggered, 0);
    EXPECT_EQ(other, 1);
}

TEST_F(HotKeyManagerTest, DoesNotHandleANullEvent) {
    manager().registerHotKey(standard);
    EXPECT_EQ(static_cast<std::int32_t>(sendToHandler(nullptr)), -9874);
    EXPECT_EQ(triggered, 0);
}

TEST_F(HotKeyManagerTest, TriggersNothingForAnEventThatIsNotItsOwn) {
    manager().registerHotKey(standard);
    const HotKeyEvent unknown;
    const HotKeyEvent foreign{HotKeyIdentifier{0x514C4C50, 1}, ""};
    for (const HotKeyEvent& event : {unknown, foreign}) {
        EXPECT_EQ(sendToHandler(&event), HotKeyStatus::noError);
        EXPECT_EQ(triggered, 0);
    }
    const HotKeyEvent own{quickAddHotKey, ""};
    EXPECT_EQ(sendToHandler(&own), HotKeyStatus::noError);
    EXPECT_EQ(triggered, 1);
}

TEST_F(HotKeyManagerTest, NothingArrivesAfterItsEnd) {
    manager().registerHotKey(standard);
    center.press();
    endManager();
    executor.run();
    EXPECT_EQ(triggered, 0);
    ASSERT_EQ(registrations().size(), 1U) << "its end gives nothing back";
    press();
    EXPECT_EQ(triggered, 0);
}

TEST_F(HotKeyManagerTest, NoAnswerArrivesAfterItsEnd) {
    center.holding = true;
    manager().registerHotKey(standard);
    endManager();
    center.answerAll();
    EXPECT_EQ(registrations().size(), 1U);
}

} // namespace
} // namespace quillo
