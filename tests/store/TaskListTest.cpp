#include "store/TaskList.h"

#include "model/TodoItemJson.h"
#include "store/World.h"
#include "support/ArbitraryTodoItem.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace quillo {
namespace {

using support::contents;
using support::numberedId;
using support::numberedTasks;
using support::Task;

/// Ids, states, and the places of open and done tasks.
void expectPlacesOf(const TaskList& list, const std::vector<TodoItem>& model) {
    std::size_t open = 0;
    std::size_t done = 0;
    for (std::size_t index = 0; index < model.size(); ++index) {
        EXPECT_EQ(list.idAt(index), model[index].id);
        EXPECT_EQ(list.isDoneAt(index), model[index].isDone);
        EXPECT_EQ(list.doneBefore(index), done);
        if (model[index].isDone)
            EXPECT_EQ(list.placeOfDone(done++), index);
        else
            EXPECT_EQ(list.placeOfOpen(open++), index);
    }
    EXPECT_EQ(list.doneBefore(model.size()), done);
}

TEST(TaskList, StartsEmpty) {
    const TaskList list;
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.size(), 0U);
    EXPECT_EQ(list.doneCount(), 0U);
    EXPECT_EQ(list.begin(), list.end());
    EXPECT_EQ(list.doneBefore(0), 0U);
    EXPECT_EQ(list.indexOf(numberedId(0)), std::nullopt);
    EXPECT_EQ(list, TaskList(std::vector<TodoItem>{}));
}

TEST(TaskList, HasTheTasksItWasMadeOfWhateverTheirNumber) {
    for (const std::uint32_t count : {1U, 255U, 256U, 257U, 512U, 1000U}) {
        const std::vector<TodoItem> items = numberedTasks(count);
        const TaskList list(items);
        EXPECT_EQ(contents(list), items);
        EXPECT_EQ(list.size(), count);
        for (std::uint32_t index = 0; index < count; ++index) {
            EXPECT_EQ(list[index].id, numberedId(index));
            EXPECT_EQ(list.indexOf(numberedId(index)), index);
        }
        EXPECT_EQ(list.indexOf(numberedId(count)), std::nullopt);
    }
}

TEST(TaskList, TakesNewTasksInFront) {
    TaskList list;
    for (int number = 0; number < 600; ++number)
        list.pushFront(Task(std::to_string(number)));
    EXPECT_EQ(list.size(), 600U);
    for (std::size_t index = 0; index < 600; ++index)
        EXPECT_EQ(list[index].title, std::to_string(599 - index));
}

TEST(TaskList, FindsTheFirstOfEqualIds) {
    TaskList list({Task("a"), Task("b").id(numberedId(7)), Task("c").id(numberedId(7))});
    EXPECT_EQ(list.indexOf(numberedId(7)), 1U);
    list.remove(1);
    EXPECT_EQ(list.indexOf(numberedId(7)), 1U);
    EXPECT_EQ(list[1].title, "c");
    list.remove(1);
    EXPECT_EQ(list.indexOf(numberedId(7)), std::nullopt);
}

TEST(TaskList, IsEqualToOneWithEqualTasksHoweverBothCameAbout) {
    const std::vector<TodoItem> items = numberedTasks(300);
    TaskList grown;
    for (auto item = items.rbegin(); item != items.rend(); ++item)
        grown.pushFront(*item);
    EXPECT_EQ(grown, TaskList(items));
    grown.replace(299, Task("another"));
    EXPECT_NE(grown, TaskList(items));
    grown.remove(299);
    EXPECT_NE(grown, TaskList(items));
}

TEST(TaskList, LeavesCopiesAsTheyWere) {
    TaskList list(numberedTasks(600));
    const TaskList before = list;
    list.replace(300, Task("new"));
    list.remove(0);
    list.pushFront(Task("first"));
    EXPECT_EQ(contents(before), numberedTasks(600));
}

TEST(TaskList, SharesWithACopyWhatDidNotChange) {
    TaskList list(numberedTasks(1000));
    const TaskList before = list;
    list.replace(500, Task("new"));
    EXPECT_EQ(&list[0], &before[0]);
    EXPECT_EQ(&list[999], &before[999]);
    EXPECT_NE(&list[500], &before[500]);
}

TEST(TaskList, IsEmptyOnceMovedFrom) {
    TaskList list(numberedTasks(3));
    const TaskList moved = std::move(list);
    EXPECT_EQ(moved.size(), 3U);
    EXPECT_TRUE(list.empty()); // NOLINT(bugprone-use-after-move): what it is then is promised.
}

TEST(TaskList, RemovesTheDoneTasksOfWholeAndMixedChunks) {
    std::vector<TodoItem> items = numberedTasks(1000);
    for (std::size_t index = 256; index < 600; ++index)
        items[index].isDone = true;
    TaskList list(items);
    EXPECT_EQ(list.doneCount(), 344U);
    list.removeDone();
    EXPECT_EQ(list.doneCount(), 0U);
    items.erase(items.begin() + 256, items.begin() + 600);
    EXPECT_EQ(contents(list), items);
}

/// Whatever is done to it, it is what a plain array would be, and every copy stays what it was.
RC_GTEST_PROP(TaskList, BehavesLikeAnArray, ()) {
    const auto anyTask = [] {
        return TodoItem(Task(*rc::gen::arbitrary<std::string>())
                            .id(numberedId(*rc::gen::inRange<std::uint32_t>(0, 900))));
    };
    std::vector<TodoItem> model = numberedTasks(*rc::gen::element(0U, 1U, 255U, 256U, 257U, 700U));
    const int doneShare = *rc::gen::inRange(0, 5);
    for (std::size_t index = 0; index < model.size(); ++index)
        model[index].isDone = index % 5 < static_cast<std::size_t>(doneShare);
    TaskList list(model);
    std::vector<std::pair<TaskList, std::vector<TodoItem>>> copies;

    const int steps = *rc::gen::inRange(0, 40);
    for (int step = 0; step < steps; ++step) {
        copies.emplace_back(list, model);
        const int operation = *rc::gen::weightedElement<int>({{5, 0}, {5, 1}, {5, 2}, {1, 3}});
        const auto index = model.empty() ? 0 : *rc::gen::inRange<std::size_t>(0, model.size());
        const auto place = model.begin() + static_cast<std::ptrdiff_t>(index);
        if (operation == 0 || (model.empty() && operation != 3)) {
            const TodoItem item = anyTask();
            list.pushFront(item);
            model.insert(model.begin(), item);
        } else if (operation == 1) {
            TodoItem item = anyTask();
            item.isDone = *rc::gen::arbitrary<bool>();
            list.replace(index, item);
            *place = item;
        } else if (operation == 2) {
            list.remove(index);
            model.erase(place);
        } else {
            list.removeDone();
            std::erase_if(model, [](const TodoItem& item) { return item.isDone; });
        }

        RC_ASSERT(list.size() == model.size());
        RC_ASSERT(list.doneCount() ==
                  static_cast<std::size_t>(std::count_if(model.begin(), model.end(),
                                                         [](const TodoItem& item) { return item.isDone; })));
        const Uuid id = numberedId(*rc::gen::inRange<std::uint32_t>(0, 900));
        const auto found =
            std::find_if(model.begin(), model.end(), [&id](const TodoItem& item) { return item.id == id; });
        RC_ASSERT(list.indexOf(id) ==
                  (found == model.end() ? std::nullopt : std::optional<std::size_t>(found - model.begin())));
        for (std::size_t at = 0; at < model.size(); at += 50)
            RC_ASSERT(list[at] == model[at]);
        expectPlacesOf(list, model);
    }
    copies.emplace_back(list, model);
    for (const auto& [copy, expected] : copies)
        RC_ASSERT(contents(copy) == expected);
}

TEST(TaskList, FindsAllIdsWithABeginning) {
    std::vector<TodoItem> items = support::numberedTasks(600);
    const TaskList list(items);
    EXPECT_EQ(list.indexesOf("").size(), 600u);
    EXPECT_EQ(list.indexesOf("00000000").size(), 600u);
    EXPECT_EQ(list.indexesOf("00000000000000000000000000000123"), std::vector<std::size_t>{0x123});
    EXPECT_EQ(list.indexesOf("0000000000000000000000000000002"),
              (std::vector<std::size_t>{32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42, 43, 44, 45, 46, 47}));
    EXPECT_TRUE(list.indexesOf("1").empty());
    EXPECT_TRUE(list.indexesOf("000000000000000000000000000001230").empty());
    EXPECT_TRUE(TaskList().indexesOf("0").empty());
}

TEST(TaskList, FindsTheTasksThatHaveANotification) {
    std::vector<TodoItem> items = support::numberedTasks(600);
    items[3].notificationID = "quillo.3";
    items[500].notificationID = "";
    items[599].title = "\"notificationID\":";
    const std::vector<TodoItem> expected{items[3], items[500]};
    EXPECT_EQ(TaskList(items).itemsWithNotification(), expected);
    EXPECT_EQ(TaskList::decode(Data(*encodeStoredItems(items)))->itemsWithNotification(), expected);
    items[3].createdAt = {std::numeric_limits<double>::infinity()}; // Cannot be encoded.
    EXPECT_EQ(TaskList(items).itemsWithNotification().size(), 2u);
    EXPECT_TRUE(TaskList().itemsWithNotification().empty());
}

} // namespace
} // namespace quillo
