#include "entry/TaskCommands.h"

#include "base/ManualExecutor.h"
#include "entry/Services.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/TemporaryFolder.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

namespace quillo {
namespace {

/// The commands, one by one.
struct Commands {
    TaskCommands& commands;

    control::Answer ask(control::Command command) const {
        control::Answer answer = Error{"no answer"};
        commands.answer({std::move(command), "Europe/Berlin", "en_US"},
                        [&](const control::Answer& given) { answer = given; });
        return answer;
    }
    Result<control::NumberedItem> one(control::Command command) const {
        const control::Answer answer = ask(std::move(command));
        if (!answer)
            return answer.error();
        EXPECT_EQ(answer->size(), 1u);
        return answer->front();
    }
    auto add(std::string text) const { return one(control::Add{std::move(text)}); }
    auto setDone(std::string task, bool done) const { return one(control::SetDone{std::move(task), done}); }
    auto edit(std::string task, std::string text) const {
        return one(control::Edit{std::move(task), std::move(text)});
    }
    auto remove(std::string task) const { return one(control::Delete{std::move(task)}); }
    auto remind(std::string task, std::string when) const {
        return one(control::Remind{std::move(task), std::move(when)});
    }
    std::vector<control::NumberedItem> clearCompleted() const { return *ask(control::ClearCompleted{}); }
};

/// The list and its commands over in-memory twins, in Berlin on Tuesday, 4 March 2025, 10:41:00.25.
struct Desk {
    unicode::CivilCalendar calendar = *unicode::CivilCalendar::create("Europe/Berlin", "en_US");
    std::shared_ptr<const Place> place = *Place::create("Europe/Berlin", "en_US");
    support::FixedClock clock;
    support::InMemoryPreferences preferences;
    support::InMemoryCloudStore cloud;
    support::TemporaryFolder folder;
    Backups backups{folder.path(), clock};
    ManualExecutor mainExecutor;
    Services services{Surroundings{preferences, cloud, clock, calendar, mainExecutor, backups}};
    TodoStore& store = services.todoStore();
    Commands commands{services.commands()};

    std::optional<TodoItem> add(std::string_view text) {
        std::optional<TodoItem> added;
        services.addTask().add(text, place, [&](const std::optional<TodoItem>& item) { added = item; });
        return added;
    }
    std::vector<std::string> titles() const { return support::titles(store.items()); }
    double stamp() const { return store.lastLocalStamp().get(); }
};

TEST(AddTask, KeepsTheCleanTitleAndTheDueDate) {
    Desk desk;
    const auto item = desk.add("  Email Sam in 2 hours ");
    ASSERT_TRUE(item);
    EXPECT_EQ(item->title, "Email Sam");
    EXPECT_EQ(item->dueDate, desk.calendar.instant({2025, 3, 4}, {12, 41}));
    EXPECT_EQ(item->createdAt, desk.clock.now());
    EXPECT_FALSE(item->isDone);
    EXPECT_FALSE(item->completedAt);
    EXPECT_EQ(item->notificationID, "quillo." + item->id.toString());
    EXPECT_EQ(desk.store.items()[0], *item);
}

TEST(AddTask, PutsTheNewestFirstWhateverItsDate) {
    Desk desk;
    desk.add("Pay rent tomorrow");
    desk.add("Plan party next friday");
    desk.add("Buy milk");
    EXPECT_EQ(desk.titles(), (std::vector<std::string>{"Buy milk", "Plan party", "Pay rent"}));
}

TEST(AddTask, MakesNoTaskOfABlankText) {
    Desk desk;
    const double before = desk.stamp();
    EXPECT_FALSE(desk.add(""));
    EXPECT_FALSE(desk.add(" \t\u00A0\n"));
    EXPECT_TRUE(desk.store.items().empty());
    EXPECT_EQ(desk.stamp(), before);
}

TEST(AddTask, ATextThatIsAllDateIsItsOwnTitle) {
    Desk desk;
    EXPECT_EQ(desk.add("tomorrow")->title, "tomorrow");
}

TEST(TaskCommands, NumberTasksFromTheNewest) {
    Desk desk;
    ASSERT_TRUE(desk.commands.add("first"));
    EXPECT_EQ(desk.commands.add("second")->number, 1u);
    const auto done = desk.commands.setDone("2", true);
    ASSERT_TRUE(done);
    EXPECT_EQ(done->item.title, "first");
    EXPECT_TRUE(desk.store.items()[1].isDone);
    EXPECT_EQ(done->item.completedAt, desk.clock.now());
}

TEST(TaskCommands, FindTasksByTheBeginningOfTheirIdentifier) {
    Desk desk;
    const std::string id = desk.commands.add("first")->item.id.toString();
    ASSERT_TRUE(desk.commands.add("second"));
    std::string lower = id;
    for (char& c : lower)
        c = static_cast<char>(std::tolower(c));
    for (const std::string& name : {id, lower, id.substr(0, 8), id.substr(0, 13), lower.substr(0, 9)}) {
        const auto found = desk.commands.edit(name, "first");
        ASSERT_TRUE(found) << name << ": " << found.error().message;
        EXPECT_EQ(found->number, 2u);
    }
    EXPECT_FALSE(desk.commands.edit(id.substr(0, 7), "x"));
    EXPECT_FALSE(desk.commands.edit("00000000", "x"));
    EXPECT_FALSE(desk.commands.edit(id + "0", "x"));
}

TEST(TaskCommands, RefuseAnAmbiguousIdentifier) {
    Desk desk;
    TodoItem one;
    one.title = "one";
    one.id = *Uuid::parse("AAAAAAAA-0000-0000-0000-000000000001");
    TodoItem two = one;
    two.id = *Uuid::parse("AAAAAAAA-0000-0000-0000-000000000002");
    desk.store.add(one);
    desk.store.add(two);
    EXPECT_NE(desk.commands.remove("AAAAAAAA").ok(), true);
    EXPECT_EQ(desk.store.items().size(), 2u);
    EXPECT_EQ(desk.commands.remove("AAAAAAAA-0000-0000-0000-000000000001")->item.title, "one");
}

TEST(TaskCommands, NeverActOnAnotherTaskOfTheSameIdentifier) {
    Desk desk;
    TodoItem first;
    first.title = "first";
    first.id = Uuid::random();
    TodoItem second = first;
    second.title = "second";
    second.isDone = true;
    desk.store.add(second);
    desk.store.add(first);
    EXPECT_FALSE(desk.commands.edit("2", "x"));
    EXPECT_FALSE(desk.commands.setDone("2", false));
    EXPECT_FALSE(desk.commands.remove("2"));
    EXPECT_EQ(desk.titles(), (std::vector<std::string>{"first", "second"}));
    EXPECT_EQ(desk.commands.remove("1")->item.title, "first");
    EXPECT_EQ(desk.commands.remove("1")->item.title, "second");
}

TEST(TaskCommands, SayWhichTaskThereIsNot) {
    Desk desk;
    EXPECT_EQ(desk.commands.remove("1").error().message, "no task 1");
    ASSERT_TRUE(desk.commands.add("only"));
    EXPECT_EQ(desk.commands.setDone("2", true).error().message, "no task 2; the list has 1 task");
    for (const char* name : {"0", "-1", "", "1.0", "99999999999999999999999", "x", "zzzzzzzzz"})
        EXPECT_FALSE(desk.commands.setDone(name, true)) << name;
    EXPECT_EQ(desk.store.doneCount().get(), 0);
}

TEST(TaskCommands, LeaveATaskAloneThatIsAsAskedAlready) {
    Desk desk;
    ASSERT_TRUE(desk.commands.add("first"));
    desk.clock.advance(10);
    const double before = desk.stamp();
    EXPECT_TRUE(desk.commands.setDone("1", false));
    EXPECT_TRUE(desk.commands.edit("1", " first "));
    EXPECT_EQ(desk.commands.clearCompleted().size(), 0u);
    EXPECT_EQ(desk.stamp(), before);
    EXPECT_TRUE(desk.commands.setDone("1", true));
    EXPECT_GT(desk.stamp(), before);
}

TEST(TaskCommands, EditTakesTheTextAsItStands) {
    Desk desk;
    ASSERT_TRUE(desk.commands.add("Call mom tomorrow"));
    const auto due = desk.store.items()[0].dueDate;
    EXPECT_EQ(desk.commands.edit("1", "  Call dad next friday ")->item.title, "Call dad next friday");
    EXPECT_EQ(desk.store.items()[0].title, "Call dad next friday");
    EXPECT_EQ(desk.store.items()[0].dueDate, due);
    EXPECT_FALSE(desk.commands.edit("1", " \n"));
    EXPECT_EQ(desk.store.items()[0].title, "Call dad next friday");
}

TEST(TaskCommands, ClearCompletedAnswersWhatIsGone) {
    Desk desk;
    for (const char* text : {"a", "b", "c", "d"})
        ASSERT_TRUE(desk.commands.add(text));
    ASSERT_TRUE(desk.commands.setDone("1", true));
    ASSERT_TRUE(desk.commands.setDone("3", true));
    const auto gone = desk.commands.clearCompleted();
    ASSERT_EQ(gone.size(), 2u);
    EXPECT_EQ(gone[0].item.title, "d");
    EXPECT_EQ(gone[0].number, 1u);
    EXPECT_EQ(gone[1].item.title, "b");
    EXPECT_EQ(gone[1].number, 3u);
    EXPECT_EQ(desk.titles(), (std::vector<std::string>{"c", "a"}));
}

TEST(TaskCommands, RemindSetsTheDateAndBooksTheReminder) {
    Desk desk;
    const std::string identifier = "quillo." + desk.commands.add("Call mom")->item.id.toString();
    const auto task = desk.commands.remind("1", "tomorrow at noon");
    ASSERT_TRUE(task);
    EXPECT_EQ(task->item.dueDate, desk.calendar.instant({2025, 3, 5}, {12, 0}));
    EXPECT_EQ(task->item.notificationID, identifier);
    EXPECT_NE(desk.services.reminderBook().find(identifier), nullptr);

    const auto cleared = desk.commands.remind("1", "");
    EXPECT_EQ(cleared->item.dueDate, std::nullopt);
    EXPECT_EQ(cleared->item.notificationID, std::nullopt);
    EXPECT_EQ(desk.services.reminderBook().find(identifier), nullptr);
}

TEST(TaskCommands, RemindOfADoneTaskSetsTheDateOnly) {
    Desk desk;
    ASSERT_TRUE(desk.commands.add("Call mom tomorrow"));
    ASSERT_TRUE(desk.commands.setDone("1", true));
    const auto task = desk.commands.remind("1", "friday");
    EXPECT_EQ(task->item.dueDate, desk.calendar.instant({2025, 3, 7}, {9, 0}));
    EXPECT_EQ(task->item.notificationID, std::nullopt);
    EXPECT_TRUE(desk.services.reminderBook().reminders().empty());
}

TEST(TaskCommands, RemindWithoutADateChangesNothing) {
    Desk desk;
    ASSERT_TRUE(desk.commands.add("Call mom"));
    const double before = desk.stamp();
    desk.clock.advance(10);
    EXPECT_EQ(desk.commands.remind("1", "as ever").error().message, "there is no date in \"as ever\"");
    EXPECT_TRUE(desk.commands.remind("1", ""));
    EXPECT_EQ(desk.stamp(), before);
}

TEST(TaskCommands, AReminderToComeFollowsTheNewTitle) {
    Desk desk;
    const auto added = desk.commands.add("Call mom tomorrow");
    const auto edited = desk.commands.edit("1", "Call dad");
    EXPECT_EQ(edited->item.notificationID, added->item.notificationID);
    EXPECT_EQ(edited->item.dueDate, added->item.dueDate);
    const BookedReminder* booked = desk.services.reminderBook().find(*added->item.notificationID);
    ASSERT_NE(booked, nullptr);
    EXPECT_EQ(booked->request.content.body, "Call dad");
}

RC_GTEST_PROP(TaskCommands, AnyTextIsKeptOrRefusedAsBlank, (const std::string& text)) {
    Desk desk;
    const auto added = desk.commands.add(text);
    RC_ASSERT(desk.store.items().size() == (added ? 1u : 0u));
    if (added)
        RC_ASSERT(!added->item.title.empty());
}

} // namespace
} // namespace quillo
