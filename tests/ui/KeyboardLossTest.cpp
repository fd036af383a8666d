#include "ui/windows/KeyboardLoss.h"

#include <gtest/gtest.h>

#include <QTest>
#include <memory>

namespace quillo {
namespace {

/// Longer than a loss has to wait after the showing.
constexpr int settledMilliseconds = 700;

struct KeyboardLossTest : testing::Test {
    bool hasKeyboard = true;
    int losses = 0;
    std::unique_ptr<KeyboardLoss> loss =
        std::make_unique<KeyboardLoss>([this] { return hasKeyboard; }, [this] { ++losses; });
};

TEST_F(KeyboardLossTest, WhoHasTheKeyboardHasNotLostIt) {
    loss->aboutToShow();
    loss->check();
    QTest::qWait(settledMilliseconds);
    loss->check();
    EXPECT_EQ(losses, 0);
}

TEST_F(KeyboardLossTest, ALossLongAfterTheShowingCountsAtOnce) {
    loss->aboutToShow();
    QTest::qWait(settledMilliseconds);
    hasKeyboard = false;
    loss->check();
    EXPECT_EQ(losses, 1);
}

TEST_F(KeyboardLossTest, SettlesAfterEveryShowing) {
    EXPECT_FALSE(loss->isSettling());
    for (int showing = 0; showing < 2; ++showing) {
        loss->aboutToShow();
        EXPECT_TRUE(loss->isSettling());
        QTest::qWait(settledMilliseconds);
        EXPECT_FALSE(loss->isSettling());
    }
}

TEST_F(KeyboardLossTest, ALossSoonAfterTheShowingWaits) {
    loss->aboutToShow();
    hasKeyboard = false;
    loss->check();
    EXPECT_EQ(losses, 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return losses == 1; }, 2 * settledMilliseconds));
}

TEST_F(KeyboardLossTest, AWaitingLossIsNotThatOfTheNextShowing) {
    loss->aboutToShow();
    hasKeyboard = false;
    loss->check();
    QTest::qWait(settledMilliseconds / 2);
    loss->aboutToShow();
    QTest::qWait(settledMilliseconds / 2);
    EXPECT_EQ(losses, 0);
    hasKeyboard = true;
    QTest::qWait(settledMilliseconds);
    EXPECT_EQ(losses, 0);
}

TEST_F(KeyboardLossTest, WhatComesBackSoonWasNotLost) {
    loss->aboutToShow();
    hasKeyboard = false;
    loss->check();
    hasKeyboard = true;
    QTest::qWait(settledMilliseconds);
    EXPECT_EQ(losses, 0);
}

TEST_F(KeyboardLossTest, ALossIsForgottenWithTheWindow) {
    loss->aboutToShow();
    hasKeyboard = false;
    loss->check();
    loss.reset();
    QTest::qWait(settledMilliseconds);
    EXPECT_EQ(losses, 0);
}

} // namespace
} // namespace quillo
