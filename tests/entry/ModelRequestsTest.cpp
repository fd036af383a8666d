#include "base/ManualExecutor.h"
#include "entry/Services.h"
#include "reminders/TaskReminder.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/RecordingReminderCenter.h"
#include "support/ScriptedLanguageModel.h"
#include "support/TemporaryFolder.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::generatedContent;
using support::generatedContentAt;

/// The list and its commands, and a model that takes its time; in Berlin on Tuesday, 4 March 2025,
/// 10:41:00.25.
struct ModelRequestsTest : testing::Test {
    unicode::CivilCalendar calendar = *unicode::CivilCalendar::create("Europe/Berlin", "en_US");
    support::FixedClock clock;
    support::InMemoryPreferences preferences;
    support::InMemoryCloudStore cloud;
    support::TemporaryFolder folder;
    Backups backups{folder.path(), clock};
    ManualExecutor mainExecutor;
    support::ScriptedLanguageModel model;
    Places places{&model};
    std::optional<Services> services{
        std::in_place, Surroundings{preferences, cloud, clock, calendar, mainExecutor, backups, &model}};
    TodoStore& store = services->todoStore();
    std::vector<control::Answer> answers;

    void add(std::string_view text) { services->addTask().add(text, *places.at("Europe/Berlin", "en_US")); }
    void ask(control::Command command) {
        services->commands().answer({std::move(command), "Europe/Berlin", "en_US"},
                                    [this](const control::Answer& answer) { answers.push_back(answer); });
    }
    void ask(control::Command command, const UnderstoodText& text) {
        services->commands().answer({std::move(command), "Europe/Berlin", "en_US"}, text,
                                    [this](const control::Answer& answer) { answers.push_back(answer); });
    }
    std::vector<std::string> titles() const { return support::titles(store.items()); }
};

TEST_F(ModelRequestsTest, ATaskComesOntoTheListWhenTheModelHasAnswered) {
    const Instant typed = clock.now();
    add(" call mom tmrw 9p ");
    EXPECT_TRUE(titles().empty());
    clock.advance(3);
    EXPECT_TRUE(model.answer("call mom tmrw 9p", generatedContentAt("TOMORROW", 21, 0, "call mom")));
    ASSERT_EQ(titles(), std::vector<std::string>{"call mom"});
    const TodoItem& item = store.items()[0];
    EXPECT_EQ(item.dueDate, calendar.instant({2025, 3, 5}, {21, 0}));
    EXPECT_EQ(item.createdAt, typed);
    EXPECT_EQ(item.notificationID, reminderIdentifier(item.id));
    EXPECT_NE(services->reminderBook().find(*item.notificationID), nullptr);
}

TEST_F(ModelRequestsTest, TimesCountFromWhenTheTextWasTyped) {
    const Instant typed = clock.now();
    add("tea in a couple minutes, maybe");
    clock.advance(60);
    GeneratedContent content = generatedContent("IN_MINUTES", "tea");
    content.properties[1].second = std::int64_t{2};
    model.answer("tea in a couple minutes, maybe", content);
    EXPECT_EQ(store.items()[0].dueDate, typed + 120);
    EXPECT_EQ(model.conversations.front()->reference.now, typed);
}

TEST_F(ModelRequestsTest, AModelThatAnswersAtOnceDelaysNothing) {
    model.answersAtOnce = [](std::string_view) { return generatedContent("TODAY", "x"); };
    add("x soon");
    EXPECT_EQ(titles(), std::vector<std::string>{"x"});
    ask(control::Add{"x soon"});
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0]->front().item, store.items()[0]);
}

TEST_F(ModelRequestsTest, ATextThatTheModelCannotDateIsKeptAsItIs) {
    add("one soon");
    add("two soon");
    model.answer("one soon", Error{"out of memory"});
    model.answer("two soon", generatedContent("NEXT_WEEK", "2"));
    EXPECT_EQ(titles(), (std::vector<std::string>{"two soon", "one soon"}));
    EXPECT_EQ(store.items()[0].dueDate, std::nullopt);
}

TEST_F(ModelRequestsTest, TextsDoNotWaitForEachOther) {
    add("one soon");
    add("two soon");
    add("Buy milk");
    EXPECT_EQ(titles(), std::vector<std::string>{"Buy milk"});
    model.answer("two soon", generatedContent("TODAY", "2"));
    model.answer("one soon", generatedContent("TODAY", "1"));
    EXPECT_EQ(titles(), (std::vector<std::string>{"1", "2", "Buy milk"}));
}

TEST_F(ModelRequestsTest, QuittingKeepsWhatWasTypedInItsOrder) {
    ask(control::Add{"one soon"});
    add("two soon");
    ask(control::Remind{"1", "never mind"});
    ask(control::Add{"three soon"});
    services->giveUpWaiting();
    EXPECT_EQ(titles(), (std::vector<std::string>{"three soon", "two soon", "one soon"}));
    EXPECT_EQ(store.items()[0].dueDate, std::nullopt);
    EXPECT_EQ(model.waiting(), 0U);
    ASSERT_EQ(answers.size(), 3U);
    EXPECT_EQ(answers[0].error().message, "no task 1");
    EXPECT_EQ(answers[1]->front().item.title, "one soon");
    EXPECT_EQ(answers[2]->front().item.title, "three soon");
    services->giveUpWaiting();
    EXPECT_EQ(store.items().size(), 3U);
    EXPECT_EQ(answers.size(), 3U);
}

TEST_F(ModelRequestsTest, WhatIsAnsweredTooLateChangesNothing) {
    add("one soon");
    const auto late = model.conversations.front()->reply;
    services->giveUpWaiting();
    late(generatedContent("TODAY", "1"));
    EXPECT_EQ(titles(), std::vector<std::string>{"one soon"});
}

TEST_F(ModelRequestsTest, AnAnswerAfterTheEndIsHeardByNobody) {
    ask(control::Add{"one soon"});
    ask(control::Add{"Buy milk"});
    ask(control::Remind{"1", "soon"});
    ASSERT_EQ(answers.size(), 1U);
    const auto add = model.conversations[0]->reply;
    const auto remind = model.conversations[1]->reply;
    services.reset();
    EXPECT_TRUE(model.conversations[0]->dropped);
    EXPECT_TRUE(model.conversations[1]->dropped);
    add(generatedContent("TODAY"));
    remind(generatedContent("TODAY"));
    EXPECT_EQ(answers.size(), 1U);
}

TEST_F(ModelRequestsTest, ACommandIsAnsweredAfterTheModel) {
    ask(control::Add{"one soon"});
    ask(control::Add{"Buy milk"});
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0]->front().item.title, "Buy milk");
    model.answer("one soon", generatedContent("TODAY", "1"));
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[1]->front().number, 1U);
    EXPECT_EQ(answers[1]->front().item, store.items()[0]);
}

TEST_F(ModelRequestsTest, RemindAsksToo) {
    ask(control::Add{"call mom"});
    ask(control::Remind{"1", "tmrw 9p"});
    ASSERT_EQ(answers.size(), 1U);
    // By now the number is another task's.
    add("Buy milk");
    model.answer("tmrw 9p", generatedContentAt("TOMORROW", 21, 0));
    ASSERT_EQ(answers.size(), 2U);
    ASSERT_TRUE(answers[1]) << answers[1].error().message;
    EXPECT_EQ(answers[1]->front().number, 2U);
    EXPECT_EQ(answers[1]->front().item.title, "call mom");
    EXPECT_EQ(answers[1]->front().item.dueDate, calendar.instant({2025, 3, 5}, {21, 0}));
    EXPECT_EQ(store.items()[0].dueDate, std::nullopt);
    EXPECT_EQ(store.items()[1].notificationID, reminderIdentifier(store.items()[1].id));
}

TEST_F(ModelRequestsTest, RemindWithoutADateChangesNothing) {
    ask(control::Add{"call mom"});
    const double before = store.lastLocalStamp().get();
    clock.advance(10);
    ask(control::Remind{"1", "soon"});
    model.answer("soon", generatedContent("NONE"));
    EXPECT_EQ(answers.back().error().message, "there is no date in \"soon\"");
    ask(control::Remind{"1", "later"});
    services->giveUpWaiting();
    EXPECT_EQ(answers.back().error().message, "there is no date in \"later\"");
    EXPECT_EQ(answers.size(), 3U);
    EXPECT_EQ(store.lastLocalStamp().get(), before);
}

TEST_F(ModelRequestsTest, RemindOfATaskThatIsGoneMeanwhile) {
    ask(control::Add{"call mom"});
    ask(control::Remind{"1", "soon"});
    ask(control::Delete{"1"});
    model.answer("soon", generatedContent("TODAY"));
    EXPECT_EQ(answers.back().error().message, "the task is gone");
    EXPECT_TRUE(store.items().empty());
}

TEST_F(ModelRequestsTest, RemindOfATaskThatIsDoneMeanwhileSetsTheDateOnly) {
    ask(control::Add{"call mom"});
    ask(control::Remind{"1", "tmrw"});
    ask(control::SetDone{"1", true});
    model.answer("tmrw", generatedContent("TOMORROW"));
    ASSERT_TRUE(answers.back());
    EXPECT_TRUE(store.items()[0].isDone);
    EXPECT_TRUE(store.items()[0].dueDate);
    EXPECT_EQ(store.items()[0].notificationID, std::nullopt);
}

TEST_F(ModelRequestsTest, NobodyIsAskedAboutATaskThatThereIsNot) {
    ask(control::Remind{"1", "soon"});
    EXPECT_EQ(answers.back().error().message, "no task 1");
    EXPECT_TRUE(model.conversations.empty());
}

TEST_F(ModelRequestsTest, ManyPlacesMayBeAskedAboutWhileAModelThinks) {
    // More than are kept for their own sake.
    constexpr int zones = 24;
    for (int i = 1; i <= zones; ++i) {
        const std::string zone =
            i <= 12 ? "Etc/GMT+" + std::to_string(i) : "Etc/GMT-" + std::to_string(i - 12);
        services->commands().answer({control::Add{std::to_string(i) + " soon"}, zone, "en_US"},
                                    [this](const control::Answer& answer) { answers.push_back(answer); });
    }
    EXPECT_EQ(model.waiting(), static_cast<std::size_t>(zones));
    for (int i = 1; i <= zones; ++i)
        EXPECT_TRUE(model.answer(std::to_string(i) + " soon", generatedContent("TODAY")));
    EXPECT_EQ(answers.size(), static_cast<std::size_t>(zones));
}

TEST_F(ModelRequestsTest, NobodyIsAskedAboutWhatIsUnderstoodAlready) {
    const Instant typed = clock.now();
    const Instant due = typed + 600;
    clock.advance(5);
    ask(control::Add{"one soon"}, {{"one", due, "AI: ..."}, typed});
    ask(control::Add{"two soon"}, {{"two soon", {}, "regex+ai miss"}, typed});
    ask(control::Remind{"1", "later"}, {{"later", due + 60, "AI: ..."}, typed});
    EXPECT_TRUE(model.conversations.empty());
    ASSERT_EQ(titles(), (std::vector<std::string>{"two soon", "one"}));
    EXPECT_EQ(store.items()[0].dueDate, due + 60);
    EXPECT_EQ(store.items()[1].dueDate, due);
    EXPECT_EQ(store.items()[1].createdAt, typed);
    EXPECT_EQ(store.items()[1].notificationID, reminderIdentifier(store.items()[1].id));
    ASSERT_EQ(answers.size(), 3U);
    EXPECT_EQ(answers[0]->front().number, 1U);
    EXPECT_EQ(answers[0]->front().item.title, "one");
    EXPECT_EQ(answers[2]->front().item.dueDate, due + 60);
}

TEST_F(ModelRequestsTest, WhatIsUnderstoodAlreadyIsRefusedAsAnythingElse) {
    const Instant typed = clock.now();
    ask(control::Add{" "}, {{}, typed});
    EXPECT_EQ(answers.back().error().message, "a task needs a text");
    ask(control::Remind{"1", "soon"}, {{"soon", typed, "AI: ..."}, typed});
    EXPECT_EQ(answers.back().error().message, "no task 1");
    add("Buy milk");
    ask(control::Remind{"1", "soon"}, {{"soon", {}, "regex+ai miss"}, typed});
    EXPECT_EQ(answers.back().error().message, "there is no date in \"soon\"");
    EXPECT_EQ(store.items()[0].dueDate, std::nullopt);
}

/// Where the user is asked for the permission to remind as well.
struct ModelAndPermissionTest : testing::Test {
    unicode::CivilCalendar calendar = *unicode::CivilCalendar::create("Europe/Berlin", "en_US");
    support::FixedClock clock;
    support::InMemoryPreferences preferences;
    support::InMemoryCloudStore cloud;
    support::RecordingReminderCenter center;
    NotificationCenter notifications;
    ManualExecutor mainExecutor;
    TodoStore store{{preferences, cloud, center, clock, notifications, mainExecutor}};
    NotificationManager manager{center, clock, calendar};
    support::ScriptedLanguageModel model;
    std::shared_ptr<const Place> place = *Place::create("Europe/Berlin", "en_US", &model);
    std::optional<AddTask> addTask{std::in_place, clock, store, manager};
};

TEST_F(ModelAndPermissionTest, WhatWaitsForEitherIsKeptInTheOrderOfTyping) {
    center.hold();
    addTask->add("one tomorrow", place);
    addTask->add("two soon", place);
    addTask->add("three soon", place);
    addTask->add("four tomorrow", place);
    model.answer("three soon", generatedContent("TOMORROW", "three"));
    EXPECT_TRUE(store.items().empty());
    addTask->addWaiting();
    EXPECT_EQ(support::titles(store.items()), (std::vector<std::string>{"four", "three", "two soon", "one"}));
    while (center.step()) {
    }
    EXPECT_EQ(store.items().size(), 4U);
}

TEST_F(ModelAndPermissionTest, NothingIsAddedOnceItIsGone) {
    addTask->add("one soon", place);
    const auto late = model.conversations.front()->reply;
    addTask.reset();
    EXPECT_EQ(model.waiting(), 0U);
    late(generatedContent("TODAY"));
    EXPECT_TRUE(store.items().empty());
}

TEST_F(ModelAndPermissionTest, APlaceIsKeptForAsLongAsItsAnswerIsAwaited) {
    addTask->add("one soon", place);
    const std::weak_ptr<const Place> watched = place;
    place.reset();
    EXPECT_FALSE(watched.expired());
    EXPECT_TRUE(model.answer("one soon", generatedContent("TOMORROW", "1")));
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(store.items()[0].title, "1");
}

} // namespace
} // namespace quillo
