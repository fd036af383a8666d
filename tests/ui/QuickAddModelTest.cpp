#include "ui/quickadd/QuickAddModel.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillo {
namespace {

class QuickAddModelTest : public testing::Test {
protected:
    QuickAddModelTest() {
        QObject::connect(&model, &QuickAddModel::finished, &model, [this] { ++finished; });
        model.begin();
    }

    std::vector<std::string> submitted;
    int finished = 0;
    QuickAddModel model{[this](std::string text) { submitted.push_back(std::move(text)); }};
};

TEST_F(QuickAddModelTest, SubmitsWhatWasTypedWithoutTheBlanksAround) {
    model.setText(QStringLiteral(" \t Zoë kommt\u2003um 9 \n"));
    model.submit();
    EXPECT_EQ(submitted, std::vector<std::string>{"Zoë kommt\u2003um 9"});
    EXPECT_EQ(finished, 1);
}

TEST_F(QuickAddModelTest, ASecondReturnAddsNothing) {
    model.setText(QStringLiteral("Buy milk"));
    model.submit();
    EXPECT_EQ(model.text(), QString());
    EXPECT_TRUE(model.locked());
    model.setText(QStringLiteral("Buy milk"));
    model.submit();
    EXPECT_EQ(model.text(), QString());
    EXPECT_EQ(submitted.size(), 1U);
}

TEST_F(QuickAddModelTest, IsEmptyAndLockedBeforeTheTextIsHandedOn) {
    QuickAddModel* seen = nullptr;
    QuickAddModel other([&](const std::string&) {
        EXPECT_EQ(seen->text(), QString());
        EXPECT_TRUE(seen->locked());
        seen->submit(); // as a Return would that comes in the middle of it
        submitted.emplace_back("once");
    });
    seen = &other;
    other.setText(QStringLiteral("x"));
    other.submit();
    EXPECT_EQ(submitted.size(), 1U);
}

TEST_F(QuickAddModelTest, ABlankTextAddsNothingAndIsDone) {
    model.setText(QStringLiteral(" \u00a0\u3000 "));
    model.submit();
    EXPECT_TRUE(submitted.empty());
    EXPECT_EQ(finished, 1);
    EXPECT_FALSE(model.locked());
}

TEST_F(QuickAddModelTest, CancellingAddsNothing) {
    model.setText(QStringLiteral("Buy milk"));
    model.cancel();
    EXPECT_TRUE(submitted.empty());
    EXPECT_EQ(finished, 1);
}

TEST_F(QuickAddModelTest, BeginsAnew) {
    model.setText(QStringLiteral("left over"));
    model.begin();
    EXPECT_EQ(model.text(), QString());
    model.setText(QStringLiteral("one"));
    model.submit();
    model.begin();
    EXPECT_FALSE(model.locked());
    model.setText(QStringLiteral("two"));
    model.submit();
    EXPECT_EQ(submitted, (std::vector<std::string>{"one", "two"}));
}

} // namespace
} // namespace quillo
