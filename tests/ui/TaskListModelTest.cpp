#include "ui/popover/TaskListModel.h"

#include "ListWorld.h"

#include <gmock/gmock.h>
#include <rapidcheck.h>

#include <QAbstractItemModelTester>
#include <QDateTime>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::ListWorld;
using support::numberedId;
using support::numberedTasks;
using support::Task;
using testing::ElementsAre;
using testing::IsEmpty;

/// What a view would show: it knows the rows only by what the model announces, as a view does.
class View : public QObject {
public:
    explicit View(const TaskListModel& model) : model_(model) {
        using M = QAbstractItemModel;
        connect(&model, &M::rowsInserted, this, [this](const QModelIndex&, int first, int last) {
            said.push_back("+" + range(first, last));
            for (int row = first; row <= last; ++row)
                rows_.insert(rows_.begin() + row, read(row));
        });
        connect(&model, &M::rowsRemoved, this, [this](const QModelIndex&, int first, int last) {
            said.push_back("-" + range(first, last));
            rows_.erase(rows_.begin() + first, rows_.begin() + last + 1);
        });
        connect(&model, &M::rowsMoved, this,
                [this](const QModelIndex&, int from, int last, const QModelIndex&, int before) {
                    EXPECT_EQ(from, last);
                    const int to = before > from ? before - 1 : before;
                    said.push_back(std::to_string(from) + ">" + std::to_string(to));
                    const TodoItem moved = rows_[static_cast<std::size_t>(from)];
                    rows_.erase(rows_.begin() + from);
                    rows_.insert(rows_.begin() + to, moved);
                });
        connect(&model, &M::dataChanged, this, [this](const QModelIndex& first, const QModelIndex& last) {
            said.push_back("=" + range(first.row(), last.row()));
            for (int row = first.row(); row <= last.row(); ++row)
                rows_[static_cast<std::size_t>(row)] = read(row);
        });
        connect(&model, &M::modelReset, this, [this] {
            said.emplace_back("reset");
            readAll();
        });
        readAll();
    }

    const std::vector<TodoItem>& rows() const { return rows_; }

    /// "+0" (a row came), "-1..3" (rows went), "0>2" (a row went elsewhere), "=1" (a row looks different).
    std::vector<std::string> said;

private:
    static std::string range(int first, int last) {
        return std::to_string(first) + (last == first ? "" : ".." + std::to_string(last));
    }
    void readAll() {
        rows_.clear();
        for (int row = 0; row < model_.rowCount(); ++row)
            rows_.push_back(read(row));
    }
    TodoItem read(int row) const {
        const auto value = [&](int role) { return model_.data(model_.index(row), role); };
        TodoItem item;
        item.id = Uuid::parse(value(TaskListModel::TaskId).toString().toStdString()).value();
        item.title = value(TaskListModel::EditTitle).toString().toStdString();
        item.isDone = value(TaskListModel::Done).toBool();
        return item;
    }

    const TaskListModel& model_;
    std::vector<TodoItem> rows_;
};

/// Open tasks, then done ones, as far as they can be told apart in a view.
std::vector<TodoItem> expectedRows(const std::vector<TodoItem>& list, bool showCompleted) {
    std::vector<TodoItem> rows;
    for (const bool done : {false, true}) {
        for (const TodoItem& item : list) {
            if (item.isDone == done && (showCompleted || !done)) {
                TodoItem& row = rows.emplace_back();
                row.id = item.id;
                row.title = item.title;
                row.isDone = item.isDone;
            }
        }
    }
    return rows;
}

struct TaskListModelTest : testing::Test {
    ListWorld world;
    std::optional<TaskListModel> model;
    std::optional<QAbstractItemModelTester> tester;
    std::optional<View> view;

    void show(const std::vector<TodoItem>& items, bool showCompleted) {
        world.add(items);
        model.emplace(world.store, world.clock, world.calendar);
        model->setShowCompleted(showCompleted);
        tester.emplace(&*model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        view.emplace(*model);
    }
    std::vector<std::string> titles() const { return support::titles(view->rows()); }
    QVariant data(int row, TaskListModel::Role role) const { return model->data(model->index(row), role); }
    std::string text(int row, TaskListModel::Role role) const {
        return data(row, role).toString().toStdString();
    }
};

std::vector<TodoItem> someTasks() {
    return {Task("a").id(numberedId(0)), Task("B").id(numberedId(1)).done(), Task("c").id(numberedId(2)),
            Task("D").id(numberedId(3)).done(), Task("e").id(numberedId(4))};
}

TEST_F(TaskListModelTest, StartsEmpty) {
    show({}, false);
    EXPECT_EQ(model->rowCount(), 0);
    model->setShowCompleted(true);
    EXPECT_EQ(model->rowCount(), 0);
    EXPECT_FALSE(model->data({}, TaskListModel::Title).isValid());
}

TEST_F(TaskListModelTest, ShowsOpenTasksAndThenDoneOnesIfAsked) {
    show(someTasks(), false);
    EXPECT_THAT(titles(), ElementsAre("a", "c", "e"));
    const QSignalSpy told(&*model, &TaskListModel::showCompletedChanged);
    model->setShowCompleted(true);
    EXPECT_THAT(titles(), ElementsAre("a", "c", "e", "B", "D"));
    model->setShowCompleted(true);
    EXPECT_EQ(told.count(), 1);
    model->setShowCompleted(false);
    EXPECT_THAT(titles(), ElementsAre("a", "c", "e"));
    EXPECT_THAT(view->said, ElementsAre("+3..4", "-3..4"));
    EXPECT_EQ(told.count(), 2);
}

TEST_F(TaskListModelTest, TellsEachRoleOfARow) {
    const Uuid id = numberedId(7);
    const Instant due = world.calendar.instant({2025, 3, 5}, {9, 0});
    show({Task("Call\nmom").id(id).due(due), Task("Read").done()}, true);
    EXPECT_EQ(text(0, TaskListModel::TaskId), id.toString());
    EXPECT_EQ(text(0, TaskListModel::Title), "Call mom");
    EXPECT_EQ(text(0, TaskListModel::EditTitle), "Call\nmom");
    EXPECT_EQ(data(0, TaskListModel::Done), QVariant(false));
    EXPECT_EQ(data(0, TaskListModel::HasDue), QVariant(true));
    EXPECT_EQ(data(0, TaskListModel::Due).toDateTime().toMSecsSinceEpoch(), due.unixSeconds() * 1000);
    EXPECT_EQ(text(0, TaskListModel::DueText), "Tomorrow, 9:00 AM");
    EXPECT_EQ(text(0, TaskListModel::DueSymbol), "bell.fill");
    EXPECT_EQ(text(0, TaskListModel::DueTone), "later");
    EXPECT_EQ(text(0, TaskListModel::AccessibleText), "Call mom, Due Mar 5, 2025 at 9:00 AM");

    EXPECT_EQ(data(1, TaskListModel::Done), QVariant(true));
    EXPECT_EQ(data(1, TaskListModel::HasDue), QVariant(false));
    EXPECT_FALSE(data(1, TaskListModel::Due).toDateTime().isValid());
    EXPECT_EQ(text(1, TaskListModel::DueText), "");
    EXPECT_EQ(text(1, TaskListModel::DueSymbol), "");
    EXPECT_EQ(text(1, TaskListModel::DueTone), "");
    EXPECT_EQ(text(1, TaskListModel::AccessibleText), "Completed task: Read");
}

TEST_F(TaskListModelTest, NamesItsRolesForQml) {
    show({}, false);
    QList<QByteArray> names = model->roleNames().values();
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (QList<QByteArray>{"accessibleText", "done", "due", "dueSymbol", "dueText", "dueTone",
                                        "editTitle", "hasDue", "taskId", "title"}));
}

TEST_F(TaskListModelTest, AddsOneRowForATask) {
    show(someTasks(), false);
    world.store.add(Task("new"));
    EXPECT_THAT(titles(), ElementsAre("new", "a", "c", "e"));
    world.store.add(Task("already done").done());
    EXPECT_THAT(titles(), ElementsAre("new", "a", "c", "e"));
    EXPECT_THAT(view->said, ElementsAre("+0"));
    model->setShowCompleted(true);
    world.store.add(Task("also done").done());
    EXPECT_THAT(titles(), ElementsAre("new", "a", "c", "e", "also done", "already done", "B", "D"));
    EXPECT_THAT(view->said, ElementsAre("+0", "+4..6", "+4"));
}

TEST_F(TaskListModelTest, LetsATickedRowGoAndComeBack) {
    show(someTasks(), false);
    world.store.toggle(numberedId(2));
    EXPECT_THAT(titles(), ElementsAre("a", "e"));
    world.store.toggle(numberedId(2));
    EXPECT_THAT(titles(), ElementsAre("a", "c", "e"));
    world.store.toggle(numberedId(1));
    EXPECT_THAT(titles(), ElementsAre("a", "B", "c", "e"));
    EXPECT_THAT(view->said, ElementsAre("-1", "+1", "+1"));
}

TEST_F(TaskListModelTest, MovesATickedRowWhereDoneOnesAreShown) {
    show(someTasks(), true);
    world.store.toggle(numberedId(2));
    EXPECT_THAT(titles(), ElementsAre("a", "e", "B", "c", "D"));
    world.store.toggle(numberedId(2));
    EXPECT_THAT(titles(), ElementsAre("a", "c", "e", "B", "D"));
    EXPECT_THAT(view->said, ElementsAre("1>3", "=3", "3>1", "=1"));
}

TEST_F(TaskListModelTest, LeavesATickedRowWhereItIsIfThatIsItsPlace) {
    show({Task("a"), Task("b").id(numberedId(1)), Task("C").done()}, true);
    world.store.toggle(numberedId(1));
    world.store.toggle(numberedId(1));
    EXPECT_THAT(titles(), ElementsAre("a", "b", "C"));
    EXPECT_THAT(view->said, ElementsAre("=1", "=1"));
}

TEST_F(TaskListModelTest, ChangesOneRow) {
    show(someTasks(), true);
    world.store.update(Task("c, changed").id(numberedId(2)));
    EXPECT_THAT(titles(), ElementsAre("a", "c, changed", "e", "B", "D"));
    world.store.remove(numberedId(3));
    EXPECT_THAT(titles(), ElementsAre("a", "c, changed", "e", "B"));
    world.store.remove(numberedId(0));
    EXPECT_THAT(titles(), ElementsAre("c, changed", "e", "B"));
    EXPECT_THAT(view->said, ElementsAre("=1", "-4", "-0"));
}

TEST_F(TaskListModelTest, SaysNothingOfRowsThatNobodySees) {
    show(someTasks(), false);
    world.store.update(Task("other").id(numberedId(1)).done());
    world.store.remove(numberedId(3));
    EXPECT_THAT(view->said, IsEmpty());
}

TEST_F(TaskListModelTest, KeepsTheOpenRowsWhenDoneOnesAreCleared) {
    show(someTasks(), true);
    world.store.clearCompleted();
    EXPECT_THAT(titles(), ElementsAre("a", "c", "e"));
    EXPECT_THAT(view->said, ElementsAre("-3..4", "=0..2"));
}

TEST_F(TaskListModelTest, KeepsTheRowsOfAListThatOnlyHasMoreOrFewer) {
    show(someTasks(), false);
    std::vector<TodoItem> items = someTasks();
    items.insert(items.begin(), {Task("x"), Task("y")});
    items[2].title = "a, changed";
    world.receive(items);
    EXPECT_THAT(titles(), ElementsAre("x", "y", "a, changed", "c", "e"));
    items.erase(items.begin() + 1, items.begin() + 3);
    world.receive(items);
    EXPECT_THAT(titles(), ElementsAre("x", "c", "e"));
    items.insert(items.begin() + 1, Task("between"));
    world.receive(items);
    EXPECT_THAT(titles(), ElementsAre("x", "between", "c", "e"));
    EXPECT_THAT(view->said, ElementsAre("+0..1", "=0..4", "-1..2", "=0..2", "+1", "=0..3"));
}

TEST_F(TaskListModelTest, BeginsAnewWithAnotherList) {
    show(someTasks(), false);
    world.receive({Task("x"), Task("c").id(numberedId(2))});
    EXPECT_THAT(titles(), ElementsAre("x", "c"));
    EXPECT_THAT(view->said, ElementsAre("reset"));
    world.receive({});
    EXPECT_THAT(titles(), IsEmpty());
    world.receive(someTasks());
    EXPECT_THAT(titles(), ElementsAre("a", "c", "e"));
}

TEST_F(TaskListModelTest, HasARowForEachOfEqualIds) {
    const Uuid same = numberedId(1);
    show({}, true);
    world.receive({Task("first").id(same), Task("second").id(same), Task("third").id(same).done()});
    EXPECT_THAT(titles(), ElementsAre("first", "second", "third"));
    world.store.toggle(same);
    EXPECT_THAT(titles(), ElementsAre("second", "first", "third"));
    world.store.remove(same);
    EXPECT_THAT(titles(), ElementsAre("second", "third"));
}

TEST_F(TaskListModelTest, ShowsWhateverTheListComesTo) {
    const bool holds = rc::check([] {
        ListWorld world;
        std::vector<TodoItem> list = numberedTasks(*rc::gen::element(0U, 1U, 5U, 300U));
        const int doneShare = *rc::gen::inRange(0, 5);
        for (std::size_t index = 0; index < list.size(); ++index)
            list[index].isDone = static_cast<int>(index % 4) < doneShare;
        world.add(list);
        TaskListModel model(world.store, world.clock, world.calendar);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        const View view(model);

        // Some ids come twice, and some are those of no task.
        const auto anyId = [] { return numberedId(*rc::gen::inRange<std::uint32_t>(0, 12)); };
        const auto anyTask = [&] {
            TodoItem item = Task(std::to_string(*rc::gen::inRange(0, 1000))).id(anyId());
            item.isDone = *rc::gen::arbitrary<bool>();
            return item;
        };
        const auto find = [&](const Uuid& id) {
            return std::find_if(list.begin(), list.end(),
                                [&](const TodoItem& item) { return item.id == id; });
        };
        const int steps = *rc::gen::inRange(0, 30);
        for (int step = 0; step < steps; ++step) {
            switch (
                *rc::gen::weightedElement<int>({{4, 0}, {4, 1}, {3, 2}, {3, 3}, {1, 4}, {2, 5}, {2, 6}})) {
            case 0: {
                const TodoItem item = anyTask();
                world.store.add(item);
                list.insert(list.begin(), item);
                break;
            }
            case 1: {
                const Uuid id = anyId();
                world.store.toggle(id);
                if (const auto at = find(id); at != list.end())
                    at->isDone = !at->isDone;
                break;
            }
            case 2: {
                const TodoItem item = anyTask();
                world.store.update(item);
                if (const auto at = find(item.id); at != list.end())
                    *at = item;
                break;
            }
            case 3: {
                const Uuid id = anyId();
                world.store.remove(id);
                if (const auto at = find(id); at != list.end())
                    list.erase(at);
                break;
            }
            case 4:
                world.store.clearCompleted();
                std::erase_if(list, [](const TodoItem& item) { return item.isDone; });
                break;
            case 5:
                model.setShowCompleted(!model.showCompleted());
                break;
            default: {
                // Another machine has added some, removed some, or has a list of its own.
                const auto from = *rc::gen::inRange<std::size_t>(0, list.size() + 1);
                const auto count = *rc::gen::inRange<std::size_t>(0, list.size() - from + 1);
                if (*rc::gen::arbitrary<bool>())
                    list.erase(list.begin() + static_cast<std::ptrdiff_t>(from),
                               list.begin() + static_cast<std::ptrdiff_t>(from + count));
                if (*rc::gen::arbitrary<bool>())
                    list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(from, list.size())),
                                {anyTask(), anyTask()});
                world.receive(list);
            }
            }
            RC_ASSERT(view.rows() == expectedRows(list, model.showCompleted()));
        }
    });
    EXPECT_TRUE(holds);
}

TEST_F(TaskListModelTest, RenewsDueLabelsWhenSomebodyLooksAndAtEachNewMinute) {
    const Instant due = world.calendar.instant({2025, 3, 4}, {10, 41});
    world.clock.set(due + -70);
    show({Task("Call mom").id(numberedId(1)).due(due)}, false);
    EXPECT_EQ(text(0, TaskListModel::DueTone), "today");
    QSignalSpy changed(&*model, &TaskListModel::dataChanged);
    const QSignalSpy activeChanged(&*model, &TaskListModel::activeChanged);

    // Nobody looks: nothing happens.
    world.clock.set(due + -0.05);
    QTest::qWait(100);
    EXPECT_EQ(changed.count(), 0);

    model->setActive(true);
    model->setActive(true);
    EXPECT_EQ(activeChanged.count(), 1);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0][2].value<QList<int>>(),
              (QList<int>{TaskListModel::DueText, TaskListModel::DueSymbol, TaskListModel::DueTone}));
    world.clock.set(due + 0.01);
    ASSERT_TRUE(changed.wait(5'000));
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(text(0, TaskListModel::DueTone), "overdue");

    // Looking ends shortly before another minute begins.
    model->setActive(false);
    world.clock.set(due + 59.95);
    model->setActive(true);
    model->setActive(false);
    changed.clear();
    world.clock.set(due + 61);
    QTest::qWait(150);
    EXPECT_EQ(changed.count(), 0);
}

} // namespace
} // namespace quillo
