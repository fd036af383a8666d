#include "ui/popover/PopoverModel.h"

#include "ListWorld.h"
#include "reminders/TaskReminder.h"
#include "support/RecordingUrlOpener.h"
#include "ui/row/DateTimes.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QSignalSpy>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::ListWorld;
using support::numberedId;
using support::Task;
using testing::ElementsAre;
using testing::IsEmpty;

QString name(const Uuid& id) {
    return QString::fromStdString(id.toString());
}

struct PopoverModelTest : testing::Test {
    ListWorld world;
    ReviewPromptService reviewPrompts{world.preferences, world.notifications, "1.0"};
    support::RecordingUrlOpener opener;
    Feedback feedback{opener, {}};
    std::optional<StatsStore> stats;
    std::vector<std::string> typed;
    const MenuActions actions;
    PopoverModel model{{world.store, world.setReminder, reviewPrompts, feedback, world.notifications,
                        world.clock, world.calendar, [this]() -> StatsStore& { return statsStore(); },
                        [this](std::string text) {
                            typed.push_back(std::move(text));
                            fieldWhenHandedOver = model.newItemText();
                        },
                        actions}};
    QString fieldWhenHandedOver = QStringLiteral("not handed over");

    const Uuid id = numberedId(1);
    const QString task = name(id);
    const std::string identifier = reminderIdentifier(id);

    StatsStore& statsStore() {
        if (!stats)
            stats.emplace(
                StatsStoreDependencies{world.preferences, world.clock, world.calendar, world.notifications});
        return *stats;
    }
    QDateTime inHours(double hours) const {
        return QDateTime::fromMSecsSinceEpoch(
            static_cast<qint64>((world.clock.now() + hours * 3600).unixSeconds() * 1000));
    }
    void completeTasks(int count) {
        for (int number = 0; number < count; ++number)
            reviewPrompts.noteCompletion();
    }
};

TEST_F(PopoverModelTest, HandsOverWhatWasTypedAndEmptiesTheFieldAtOnce) {
    const QSignalSpy told(&model, &PopoverModel::newItemTextChanged);
    model.setNewItemText(QString::fromUtf8(" \n\u00A0 Call mom\u2003tomorrow  \r\n"));
    model.setNewItemText(model.newItemText());
    EXPECT_EQ(told.count(), 1);
    model.submit();
    EXPECT_EQ(model.newItemText(), QString());
    EXPECT_EQ(told.count(), 2);
    EXPECT_EQ(fieldWhenHandedOver, QString());
    model.submit();
    EXPECT_THAT(typed, ElementsAre("Call mom\u2003tomorrow"));
}

TEST_F(PopoverModelTest, LeavesABlankTextInTheField) {
    for (const char* blank : {"", " ", " \t\r\n", "\u00A0\u2003\u2028"}) {
        model.setNewItemText(QString::fromUtf8(blank));
        model.submit();
        EXPECT_EQ(model.newItemText(), QString::fromUtf8(blank));
    }
    EXPECT_THAT(typed, IsEmpty());
}

TEST_F(PopoverModelTest, CountsOpenAndDoneTasks) {
    const QSignalSpy active(&model, &PopoverModel::activeCountChanged);
    const QSignalSpy done(&model, &PopoverModel::doneCountChanged);
    world.add({Task("a").id(id), Task("b")});
    EXPECT_EQ(model.activeCount(), 2);
    EXPECT_EQ(model.doneCount(), 0);
    EXPECT_TRUE(model.toggle(task));
    EXPECT_EQ(model.activeCount(), 1);
    EXPECT_EQ(model.doneCount(), 1);
    EXPECT_EQ(active.count(), 3);
    EXPECT_EQ(done.count(), 1);
    model.clearCompleted();
    EXPECT_EQ(model.doneCount(), 0);
    EXPECT_EQ(world.store.items().size(), 1U);
}

TEST_F(PopoverModelTest, ShowsDoneTasksIfAsked) {
    world.add({Task("a").done()});
    const QSignalSpy told(&model, &PopoverModel::showCompletedChanged);
    EXPECT_FALSE(model.showCompleted());
    EXPECT_EQ(model.tasks()->rowCount(), 0);
    model.setShowCompleted(true);
    EXPECT_TRUE(model.showCompleted());
    EXPECT_EQ(model.tasks()->rowCount(), 1);
    EXPECT_EQ(told.count(), 1);
}

TEST_F(PopoverModelTest, CompletesReopensAndRemoves) {
    world.add({Task("a").id(id)});
    EXPECT_TRUE(model.toggle(task));
    EXPECT_TRUE(world.task(id).isDone);
    EXPECT_TRUE(model.toggle(task.toLower()));
    EXPECT_FALSE(world.task(id).isDone);
    model.remove(task);
    EXPECT_TRUE(world.store.items().empty());
}

TEST_F(PopoverModelTest, RenamesToTheTrimmedText) {
    world.add({Task("a").id(id).due({100}).reminder("r").done()});
    const TodoItem before = world.task(id);
    model.rename(task, QString::fromUtf8("\u2003Buy milk \n"));
    TodoItem expected = before;
    expected.title = "Buy milk";
    EXPECT_EQ(world.task(id), expected);
    for (const char* blank : {"", "  ", "\n\u00A0"}) {
        model.rename(task, QString::fromUtf8(blank));
        EXPECT_EQ(world.task(id), expected);
    }
}

TEST_F(PopoverModelTest, KeepsVeryLongTitlesWhole) {
    world.add({Task("a").id(id)});
    QString title(10'000, QChar(u'x'));
    title[5'000] = u'\n';
    model.rename(task, title);
    EXPECT_EQ(world.task(id).title, title.toStdString());
}

TEST_F(PopoverModelTest, DoesNothingForTasksItDoesNotKnow) {
    world.add({Task("a").id(id)});
    const TaskList before = world.store.items();
    for (const QString& unknown : {QString(), QStringLiteral("nonsense"), name(numberedId(2)),
                                   QString(100'000, QChar(u'A')), task + QChar(u'0')}) {
        EXPECT_FALSE(model.toggle(unknown));
        model.rename(unknown, QStringLiteral("b"));
        model.remove(unknown);
        model.setReminder(unknown, inHours(1));
        model.clearReminder(unknown);
    }
    EXPECT_EQ(world.store.items(), before);
    EXPECT_THAT(world.reminders.pending, IsEmpty());
}

TEST_F(PopoverModelTest, SetsAReminderInPlaceOfTheOldOne) {
    world.add({Task("a").id(id).reminder("the old one")});
    model.setReminder(task, inHours(1));
    EXPECT_THAT(world.reminders.removed, ElementsAre("the old one"));
    EXPECT_EQ(world.task(id).dueDate, toInstant(inHours(1)));
    EXPECT_EQ(world.task(id).notificationID, identifier);
    EXPECT_EQ(world.reminders.pending.count(identifier), 1U);
}

TEST_F(PopoverModelTest, ClearsAReminder) {
    world.add({Task("a").id(id)});
    model.setReminder(task, inHours(1));
    model.clearReminder(task);
    EXPECT_THAT(world.reminders.pending, IsEmpty());
    EXPECT_EQ(world.task(id).dueDate, std::nullopt);
    EXPECT_EQ(world.task(id).notificationID, std::nullopt);
}

TEST_F(PopoverModelTest, NotesAReminderOnTheTaskHoweverLateItIsAnswered) {
    world.add({Task("a").id(id)});
    world.reminders.hold();
    model.setReminder(task, inHours(1));
    model.rename(task, QStringLiteral("b"));
    EXPECT_EQ(world.task(id).notificationID, std::nullopt);
    while (world.reminders.step()) {
    }
    EXPECT_EQ(world.task(id).notificationID, identifier);
    EXPECT_EQ(world.task(id).title, "b");
}

TEST_F(PopoverModelTest, TakesNoTimeThatIsNone) {
    world.add({Task("a").id(id)});
    model.setReminder(task, QDateTime());
    model.setReminder(task, QDateTime::fromMSecsSinceEpoch(std::numeric_limits<qint64>::max()));
    EXPECT_EQ(world.task(id).dueDate, std::nullopt);
}

TEST_F(PopoverModelTest, OffersTimesToBeRemindedAt) {
    const auto at = [this](PopoverModel::ReminderChoice which) {
        return toInstant(model.reminderChoice(which)).value();
    };
    world.clock.set(world.calendar.instant({2025, 3, 4}, {21, 30}));
    EXPECT_EQ(at(PopoverModel::InOneHour), world.clock.now() + 3600);
    EXPECT_EQ(at(PopoverModel::InThreeHours), world.clock.now() + 3 * 3600);
    EXPECT_EQ(at(PopoverModel::Tonight), world.calendar.instant({2025, 3, 5}, {20, 0}));
    EXPECT_EQ(at(PopoverModel::TomorrowMorning), world.calendar.instant({2025, 3, 5}, {9, 0}));
}

TEST_F(PopoverModelTest, BeginsTheWeekWhereTheUserDoes) {
    const struct {
        const char* locale;
        int day;
    } rows[] = {{"en_US", Qt::Sunday}, {"de_DE", Qt::Monday}, {"ar_EG", Qt::Saturday}};
    for (const auto& row : rows) {
        world.calendar = *unicode::CivilCalendar::create("Europe/Berlin", row.locale);
        EXPECT_EQ(model.weekStart(), row.day) << row.locale;
    }
}

TEST_F(PopoverModelTest, LeavesTheStatisticsAloneUntilAMenuAsks) {
    const QSignalSpy told(&model, &PopoverModel::statisticsEnabledChanged);
    world.add({Task("a").id(id)});
    model.setActive(true);
    EXPECT_FALSE(stats);
    EXPECT_TRUE(model.statisticsEnabled());
    EXPECT_TRUE(stats);

    model.setActive(false);
    world.preferences.apply({{std::string(preference_keys::statsEnabled), Value(false)}});
    model.setActive(true);
    EXPECT_EQ(told.count(), 2);
    EXPECT_FALSE(model.statisticsEnabled());
}

TEST_F(PopoverModelTest, AsksForFeedbackAtOnceWhileItIsSeen) {
    model.setActive(true);
    const QSignalSpy told(&model, &PopoverModel::feedbackShownChanged);
    completeTasks(ReviewPromptService::firstPromptAt - 1);
    EXPECT_FALSE(model.feedbackShown());
    completeTasks(1);
    EXPECT_TRUE(model.feedbackShown());
    EXPECT_EQ(told.count(), 1);
    model.setFeedbackShown(false);
    model.setActive(false);
    model.setActive(true);
    EXPECT_FALSE(model.feedbackShown());
}

TEST_F(PopoverModelTest, AsksForFeedbackWhenItAppearsNext) {
    completeTasks(ReviewPromptService::firstPromptAt);
    EXPECT_FALSE(model.feedbackShown());
    model.setActive(true);
    EXPECT_TRUE(model.feedbackShown());
    EXPECT_FALSE(reviewPrompts.takePendingRequest());
}

TEST_F(PopoverModelTest, RemembersWhetherTheCreditsAreShown) {
    const QSignalSpy told(&model, &PopoverModel::creditsShownChanged);
    model.setCreditsShown(true);
    model.setCreditsShown(true);
    EXPECT_TRUE(model.creditsShown());
    EXPECT_EQ(told.count(), 1);
}

TEST_F(PopoverModelTest, TellsItsRowsWhetherSomebodyLooks) {
    const QSignalSpy told(&model, &PopoverModel::activeChanged);
    model.setActive(true);
    EXPECT_TRUE(model.active());
    EXPECT_TRUE(model.tasks()->active());
    model.setActive(false);
    EXPECT_FALSE(model.tasks()->active());
    EXPECT_EQ(told.count(), 2);
}

/// A row in which a title is being edited goes, and with it the editor, which hands over what was typed.
TEST_F(PopoverModelTest, LetsAViewAskForAChangeWhileItIsToldOfOne) {
    world.add({Task("a").id(id), Task("b").id(numberedId(2))});
    std::vector<std::string> seen;
    QObject::connect(model.tasks(), &QAbstractItemModel::rowsRemoved, model.tasks(),
                     [&] { model.rename(name(numberedId(2)), QStringLiteral("c")); });
    QObject::connect(model.tasks(), &QAbstractItemModel::rowsRemoved, model.tasks(),
                     [&] { seen.push_back(world.task(numberedId(2)).title); });
    model.remove(task);
    EXPECT_THAT(seen, ElementsAre("b"));
    QCoreApplication::processEvents();
    EXPECT_EQ(world.task(numberedId(2)).title, "c");
}

} // namespace
} // namespace quillo
