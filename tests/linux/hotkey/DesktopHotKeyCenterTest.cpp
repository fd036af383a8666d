#include "linux/hotkey/DesktopHotKeyCenter.h"

#include "support/CapturedLog.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillo {
namespace {

/// A way of which the test says what becomes of it.
class ManualBinding : public ShortcutBinding {
public:
    void bind(const HotKeyConfig& config, std::function<void(const BindingOutcome&)> answer) override {
        wanted = config;
        answer_ = std::move(answer);
        if (outcome)
            this->answer(*outcome);
    }

    void release() override {
        wanted.reset();
        answer_ = nullptr;
    }

    void configure() override { ++configurations; }

    void answer(const BindingOutcome& with) {
        if (with.status != HotKeyStatus::noError)
            wanted.reset();
        std::exchange(answer_, nullptr)(with);
    }

    std::optional<BindingOutcome> outcome; ///< answered at once, where there is one
    std::optional<HotKeyConfig> wanted;
    int configurations = 0;

private:
    std::function<void(const BindingOutcome&)> answer_;
};

class DesktopHotKeyCenterTest : public testing::Test {
protected:
    HotKeyCenter::HotKeyReference registerStandard() {
        return center.registerHotKey({}, identifier,
                                     [this](HotKeyStatus status) { answers.push_back(status); });
    }

    void handlePresses() {
        center.installHandler([this](const HotKeyEvent* event) {
            events.push_back(*event);
            return HotKeyStatus::noError;
        });
    }

    static DesktopHotKeyCenter::Way way(ManualBinding*& binding, std::string drawback) {
        auto made = std::make_unique<ManualBinding>();
        binding = made.get();
        return {std::move(made), std::move(drawback)};
    }

    std::vector<DesktopHotKeyCenter::Way> ways() {
        std::vector<DesktopHotKeyCenter::Way> made;
        made.push_back(way(first, ""));
        made.push_back(way(second, "it is not the best way"));
        return made;
    }

    using Statuses = std::vector<HotKeyStatus>;
    static constexpr HotKeyIdentifier identifier{7, 3};

    const support::CapturedLog log;
    ManualBinding* first = nullptr;
    ManualBinding* second = nullptr;
    DesktopHotKeyCenter center{ways()};
    Statuses answers;
    std::vector<HotKeyEvent> events;
};

TEST_F(DesktopHotKeyCenterTest, TakesTheFirstWayThatWorks) {
    registerStandard();
    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(first->wanted, HotKeyConfig());
    first->answer({});
    EXPECT_EQ(answers, Statuses{HotKeyStatus::noError});
    EXPECT_FALSE(second->wanted);
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(DesktopHotKeyCenterTest, TakesTheNextWayWhereOneIsUnavailableAndSaysWhatItLacks) {
    first->outcome = BindingOutcome{HotKeyStatus::unavailable, "there is none"};
    registerStandard();
    EXPECT_EQ(second->wanted, HotKeyConfig());
    second->answer({});
    EXPECT_EQ(answers, Statuses{HotKeyStatus::noError});
    EXPECT_EQ(log.lines(), std::vector<std::string>{"it is not the best way: there is none"});
}

TEST_F(DesktopHotKeyCenterTest, SaysInOneLineWhyNoWayWorks) {
    first->outcome = BindingOutcome{HotKeyStatus::unavailable, "there is none"};
    second->outcome = BindingOutcome{HotKeyStatus::unavailable, "nor here"};
    registerStandard();
    EXPECT_EQ(answers, Statuses{HotKeyStatus::unavailable});
    EXPECT_EQ(log.lines(),
              std::vector<std::string>{"no global shortcut: there is none; nor here (a key can be bound to "
                                       "the command \"quillo quick-add\" in the desktop's settings)"});
}

TEST_F(DesktopHotKeyCenterTest, TriesNoOtherWayForWhatAnotherProgramHas) {
    first->outcome = BindingOutcome{HotKeyStatus::taken, "another has it"};
    registerStandard();
    EXPECT_EQ(answers, Statuses{HotKeyStatus::taken});
    EXPECT_FALSE(second->wanted);
    ASSERT_EQ(log.lines().size(), 1U);

    first->outcome = BindingOutcome{};
    registerStandard();
    EXPECT_EQ(answers, (Statuses{HotKeyStatus::taken, HotKeyStatus::noError}));
}

TEST_F(DesktopHotKeyCenterTest, TellsPressesWithTheIdentifierAndTheToken) {
    handlePresses();
    first->outcome = BindingOutcome{};
    registerStandard();
    first->pressed.emit("token");
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].identifier, identifier);
    EXPECT_EQ(events[0].activationToken, "token");
}

TEST_F(DesktopHotKeyCenterTest, TellsWhichKeysTheDesktopGaveAndLeadsToItsDialog) {
    const DesktopKeys keys{"Super+T", true};
    first->outcome = BindingOutcome{HotKeyStatus::unavailable, "there is none"};
    second->outcome = BindingOutcome{};
    EXPECT_EQ(center.desktopKeys().get(), std::nullopt);
    center.configure();
    const auto reference = registerStandard();
    first->desktopKeys.set(DesktopKeys{"another way's", true});
    EXPECT_EQ(center.desktopKeys().get(), std::nullopt);
    second->desktopKeys.set(keys);
    EXPECT_EQ(center.desktopKeys().get(), keys);
    center.configure();
    EXPECT_EQ(first->configurations, 0);
    EXPECT_EQ(second->configurations, 1);
    center.unregisterHotKey(reference);
    EXPECT_EQ(center.desktopKeys().get(), std::nullopt);
}

TEST_F(DesktopHotKeyCenterTest, AsksTheNextHandlerOnlyAfterOneThatDoesNotHandle) {
    int asked = 0;
    const auto notOurs = center.installHandler([&](const HotKeyEvent*) {
        ++asked;
        return HotKeyStatus::eventNotHandled;
    });
    handlePresses();
    handlePresses();
    first->outcome = BindingOutcome{};
    registerStandard();
    first->pressed.emit("");
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(events.size(), 1U);
    center.removeHandler(notOurs);
    center.removeHandler(notOurs);
    first->pressed.emit("");
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(events.size(), 2U);
}

TEST_F(DesktopHotKeyCenterTest, GivesBackWhatIsUnregistered) {
    handlePresses();
    first->outcome = BindingOutcome{HotKeyStatus::unavailable, "there is none"};
    second->outcome = BindingOutcome{};
    const auto reference = registerStandard();
    center.unregisterHotKey(reference);
    center.unregisterHotKey(reference);
    EXPECT_FALSE(second->wanted);
    second->pressed.emit("");
    EXPECT_TRUE(events.empty());
}

TEST_F(DesktopHotKeyCenterTest, StopsAskingForWhatIsUnregistered) {
    const auto reference = registerStandard();
    center.unregisterHotKey(reference);
    EXPECT_FALSE(first->wanted);
    registerStandard();
    first->answer({});
    EXPECT_EQ(answers, Statuses{HotKeyStatus::noError});
}

TEST_F(DesktopHotKeyCenterTest, HasOneShortcutAtATime) {
    first->outcome = BindingOutcome{};
    const auto reference = registerStandard();
    const auto another = registerStandard();
    EXPECT_EQ(answers, (Statuses{HotKeyStatus::noError, HotKeyStatus::unavailable}));
    center.unregisterHotKey(another);
    EXPECT_TRUE(first->wanted);
    center.unregisterHotKey(reference);
    EXPECT_FALSE(first->wanted);
}

} // namespace
} // namespace quillo
