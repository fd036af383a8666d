#include "ui/mascot/RecentInput.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <vector>

namespace quillo {
namespace {

class RecentInputTest : public testing::Test {
protected:
    RecentInputTest() {
        input.setProperty("patience", 60);
        QObject::connect(&input, &RecentInput::recentChanged, &input,
                         [this] { changes.push_back(input.recent()); });
    }

    static void wait(int milliseconds) {
        QEventLoop loop;
        QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        loop.exec();
    }

    void pressKey() {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &press);
    }

    QWindow window;
    RecentInput input;
    std::vector<bool> changes;
};

TEST_F(RecentInputTest, BeingShownIsAnInputThatGrowsOld) {
    input.setWindow(&window);
    EXPECT_FALSE(input.recent());
    window.show();
    EXPECT_TRUE(input.recent());
    wait(300);
    EXPECT_FALSE(input.recent());
    EXPECT_EQ(changes, (std::vector<bool>{true, false}));
}

TEST_F(RecentInputTest, AKeyRenewsIt) {
    window.show();
    input.setWindow(&window);
    wait(300);
    EXPECT_FALSE(input.recent());
    pressKey();
    EXPECT_TRUE(input.recent());
    EXPECT_EQ(changes, (std::vector<bool>{true, false, true}));
}

TEST_F(RecentInputTest, InputAfterInputKeepsItRecentWithoutAChange) {
    input.setProperty("patience", 1000);
    window.show();
    input.setWindow(&window);
    for (int i = 0; i < 14; ++i) {
        wait(100);
        pressKey();
    }
    EXPECT_EQ(changes, (std::vector<bool>{true}));
}

TEST_F(RecentInputTest, AHiddenWindowHasNone) {
    window.show();
    input.setWindow(&window);
    EXPECT_TRUE(input.recent());
    window.hide();
    EXPECT_FALSE(input.recent());
    EXPECT_EQ(changes, (std::vector<bool>{true, false}));
}

TEST_F(RecentInputTest, NorHasNoWindow) {
    window.show();
    input.setWindow(&window);
    input.setWindow(nullptr);
    EXPECT_FALSE(input.recent());
    pressKey();
    EXPECT_FALSE(input.recent());
}

} // namespace
} // namespace quillo
