#include "linux/loginitem/AutostartLoginItem.h"

#include "base/ManualExecutor.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace quillo {
namespace {

class AutostartLoginItemTest : public testing::Test {
protected:
    /// Lets the main thread run until there are so many answers.
    void waitForAnswers(std::size_t count) {
        using namespace std::chrono_literals;
        const auto deadline = std::chrono::steady_clock::now() + 20s;
        while (answers.size() < count && std::chrono::steady_clock::now() < deadline) {
            main.run();
            std::this_thread::sleep_for(1ms);
        }
        ASSERT_EQ(answers.size(), count);
    }

    void change(bool startsAtLogin) {
        item->change(startsAtLogin, [this](const Outcome& outcome) { answers.emplace_back(outcome.ok()); });
    }

    void read() {
        item->read([this](std::optional<bool> startsAtLogin) { answers.push_back(startsAtLogin); });
    }

    const support::TemporaryFolder folder;
    ManualExecutor main;
    std::unique_ptr<AutostartLoginItem> item = std::make_unique<AutostartLoginItem>(folder.path(), main);
    std::vector<std::optional<bool>> answers;
};

TEST_F(AutostartLoginItemTest, AnswersOnTheMainThreadInTheOrderOfTheCalls) {
    read();
    change(true);
    read();
    change(false);
    read();
    EXPECT_TRUE(answers.empty());
    waitForAnswers(5);
    EXPECT_EQ(answers, (std::vector<std::optional<bool>>{false, true, true, true, false}));
}

TEST_F(AutostartLoginItemTest, TellsWhatFailed) {
    std::filesystem::create_directory(folder.path() / "org.quillo.Quillo.desktop");
    change(true);
    waitForAnswers(1);
    EXPECT_EQ(answers[0], false);
}

TEST_F(AutostartLoginItemTest, GoingDoesWhatWasAskedForAndAnswersNoMore) {
    change(true);
    item.reset();
    EXPECT_TRUE(AutostartEntry(folder.path()).isOn());
    main.run();
    EXPECT_TRUE(answers.empty());
}

} // namespace
} // namespace quillo
