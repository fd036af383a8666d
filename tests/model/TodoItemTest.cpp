#include "model/TodoItem.h"

#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>

namespace quillo {
namespace {

using support::numberedId;
using support::Task;

TEST(TodoItem, WithTheSameIdAndAnotherTitleIsTheSameTaskButNotEqual) {
    const TodoItem one = Task("one").id(numberedId(1));
    TodoItem other = one;
    other.title = "other";
    EXPECT_EQ(one.id, other.id);
    EXPECT_NE(one, other);
}

TEST(TodoItem, IsEqualOnlyIfEveryFieldIs) {
    const TodoItem item = Task("title").due({1}).done({2}).reminder("reminder");
    EXPECT_EQ(item, TodoItem(item));

    std::vector<TodoItem> variants(9, item);
    variants[0].id = Uuid::random();
    variants[1].title = "Title";
    variants[2].isDone = false;
    variants[3].dueDate = Instant{1.5};
    variants[4].dueDate.reset();
    variants[5].createdAt = {1};
    variants[6].completedAt.reset();
    variants[7].notificationID = "";
    variants[8].notificationID.reset();
    for (const TodoItem& variant : variants)
        EXPECT_NE(variant, item);
}

TEST(TodoItem, StartsOpenAndBare) {
    const TodoItem item;
    EXPECT_FALSE(item.isDone);
    EXPECT_EQ(item.dueDate, std::nullopt);
    EXPECT_EQ(item.completedAt, std::nullopt);
    EXPECT_EQ(item.notificationID, std::nullopt);
}

} // namespace
} // namespace quillo
