#include "ui/stats/StatsModel.h"

#include "stats/Ranks.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/TodoItemBuilder.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QTranslator>
#include <optional>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::Task;
using testing::ElementsAre;
using testing::IsEmpty;

/// Statistics of a user in Berlin at 10:41, with a window that is open.
struct StatsModelTest : testing::Test {
    support::InMemoryPreferences preferences;
    support::FixedClock clock;
    NotificationCenter notifications;
    unicode::CivilCalendar calendar = *unicode::CivilCalendar::create("Europe/Berlin", "en_US");
    std::optional<StatsStore> store;
    std::optional<StatsModel> model;
    int changes = 0;

    /// As after so many completions.
    void begin(std::int64_t completions = 0) {
        model.reset();
        store.reset();
        if (completions > 0)
            preferences.set("Quillo.stats.lifetime", completions);
        store.emplace(StatsStoreDependencies{preferences, clock, calendar, notifications});
        model.emplace(*store);
        QObject::connect(&*model, &StatsModel::changed, [this] { ++changes; });
        model->setActive(true);
        changes = 0;
    }

    void complete(double seconds, const std::string& title = "task") {
        TodoItem item = Task(title);
        item.createdAt = {clock.now().secondsSince2001 - seconds};
        store->recordCompletion(item, clock.now());
        QCoreApplication::processEvents();
    }

    std::vector<std::string> awards(bool ShownAward::*which) const {
        std::vector<std::string> titles;
        for (const QVariant& each : model->awards()) {
            const auto award = each.value<ShownAward>();
            if (award.*which)
                titles.push_back(award.title.toStdString());
        }
        return titles;
    }
};

TEST_F(StatsModelTest, TellsTheRankAndTheWayToTheNext) {
    struct Case {
        std::int64_t completions;
        const char* rank;
        const char* progress;
        double climbed;
    };
    for (const Case& each : std::initializer_list<Case>{
             {0, "Tadpole", "0 tasks completed · 5 more to reach Hopper", 0},
             {1, "Tadpole", "1 tasks completed · 4 more to reach Hopper", 0.2},
             {4, "Tadpole", "4 tasks completed · 1 more to reach Hopper", 0.8},
             {5, "Hopper", "5 tasks completed · 20 more to reach Leaper", 0},
             {25, "Leaper", "25 tasks completed · 75 more to reach Bullfrog", 0},
             {300, "Bullfrog", "300 tasks completed · 200 more to reach Croak Master", 0.5},
             {999, "Croak Master", "999 tasks completed · 1 more to reach Pondsmith", 0.998},
             {1000, "Pondsmith", "1000 tasks completed · top rank reached 👑", 1},
             {12345, "Pondsmith", "12345 tasks completed · top rank reached 👑", 1}}) {
        begin(each.completions);
        EXPECT_EQ(model->rank().toStdString(), each.rank);
        EXPECT_EQ(model->progress().toStdString(), each.progress);
        EXPECT_EQ(model->progress().toStdString(), progressLine(each.completions));
        EXPECT_DOUBLE_EQ(model->climbed(), each.climbed);
        if (each.completions < 1000) {
            EXPECT_FALSE(model->drawsCrown());
        }
    }
}

TEST_F(StatsModelTest, BeforeTheFirstCompletionThereIsNothing) {
    begin();
    for (const QString& number : {model->today(), model->thisWeek(), model->allTime()})
        EXPECT_EQ(number, QStringLiteral("0"));
    EXPECT_EQ(model->streak(), QStringLiteral("0d"));
    EXPECT_EQ(model->bestStreak(), QStringLiteral("0d"));
    EXPECT_EQ(model->averageTime(), QStringLiteral("–"));
    EXPECT_FALSE(model->hasRecords());
    EXPECT_THAT(awards(&ShownAward::earned), IsEmpty());
    EXPECT_EQ(model->awards().size(), StatsModel::awardCount());
}

TEST_F(StatsModelTest, OneCompletionIsBothRecordsAndTheirAverage) {
    begin();
    complete(3 * 3600 + 12 * 60 + 5, "write\nthe letter");
    EXPECT_EQ(model->fastest().title, QStringLiteral("write the letter"));
    EXPECT_EQ(model->slowest().title, model->fastest().title);
    for (const QString& duration :
         {model->fastest().duration, model->slowest().duration, model->averageTime()})
        EXPECT_EQ(duration, QStringLiteral("3h 12m"));
    for (const QString& number : {model->today(), model->thisWeek(), model->allTime()})
        EXPECT_EQ(number, QStringLiteral("1"));
    EXPECT_EQ(model->streak(), QStringLiteral("1d"));
    EXPECT_EQ(model->bestStreak(), QStringLiteral("1d"));
}

TEST_F(StatsModelTest, ShowsACompletionOnceAndAtOnce) {
    begin();
    complete(42);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(model->today(), QStringLiteral("1"));
    EXPECT_EQ(model->fastest().duration, QStringLiteral("42s"));
}

TEST_F(StatsModelTest, NewAwardsSparkleUntilTheNextStart) {
    begin();
    complete(42);
    EXPECT_THAT(awards(&ShownAward::earned), ElementsAre("Lightning Fast", "Quick Draw"));
    EXPECT_THAT(awards(&ShownAward::sparkles), ElementsAre("Lightning Fast", "Quick Draw"));
    begin();
    EXPECT_THAT(awards(&ShownAward::earned), ElementsAre("Lightning Fast", "Quick Draw"));
    EXPECT_THAT(awards(&ShownAward::sparkles), IsEmpty());
}

TEST_F(StatsModelTest, NothingIsRenewedWhileNobodyLooks) {
    begin();
    model->setActive(false);
    complete(42);
    EXPECT_EQ(changes, 0);
    model->setActive(true);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(model->allTime(), QStringLiteral("1"));
}

TEST_F(StatsModelTest, AResetIsSeen) {
    begin();
    complete(42);
    store->reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(model->allTime(), QStringLiteral("0"));
    EXPECT_FALSE(model->hasRecords());
    EXPECT_THAT(awards(&ShownAward::earned), IsEmpty());
}

TEST_F(StatsModelTest, YesterdaysCompletionsAreNotTodays) {
    begin();
    complete(42);
    clock.advance(24 * 3600);
    model->setActive(false);
    model->setActive(true);
    EXPECT_EQ(model->today(), QStringLiteral("0"));
    EXPECT_EQ(model->thisWeek(), QStringLiteral("1"));
    EXPECT_EQ(model->streak(), QStringLiteral("1d"));
}

/// A language in which every text of ours is written with brackets around it.
class Brackets : public QTranslator {
public:
    QString translate(const char* context, const char* text, const char*, int) const override {
        return std::string(context) == "Quillo" ? u'[' + QString::fromUtf8(text) + u']' : QString();
    }
    bool isEmpty() const override { return false; }
};

TEST_F(StatsModelTest, EveryTextIsTranslated) {
    begin(4);
    Brackets language;
    QCoreApplication::installTranslator(&language);
    EXPECT_EQ(model->rank(), QStringLiteral("[Tadpole]"));
    EXPECT_EQ(model->progress(), QStringLiteral("[4 tasks completed · 1 more to reach [Hopper]]"));
    for (const QVariant& each : model->awards()) {
        const auto award = each.value<ShownAward>();
        EXPECT_EQ(award.title.front(), u'[');
        EXPECT_EQ(award.subtitle.front(), u'[');
    }
    QCoreApplication::removeTranslator(&language);
}

} // namespace
} // namespace quillo
