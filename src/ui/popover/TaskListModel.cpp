#include "ui/popover/TaskListModel.h"

#include "ui/row/DateTimes.h"

#include <QScopedValueRollback>
#include <QString>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <iterator>

namespace quillo {

namespace {

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

} // namespace

TaskListModel::TaskListModel(TodoStore& store, const Clock& clock, const unicode::CivilCalendar& calendar)
    : store_(store), clock_(clock), calendar_(calendar), text_(calendar), shown_(store.items()),
      following_(store.observeList([this](const ListChange& change) { follow(change); })) {
    nextMinute_.setSingleShot(true);
    nextMinute_.setTimerType(Qt::PreciseTimer);
    connect(&nextMinute_, &QTimer::timeout, this, &TaskListModel::renewDueLabels);
}

int TaskListModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid())
        return 0;
    return static_cast<int>(showCompleted_ ? shown_.size() : shown_.size() - shown_.doneCount());
}

QVariant TaskListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const TodoItem& item = itemAt(index.row());
    const auto label = [&] { return text_.dueLabel(*item.dueDate, clock_.now(), item.isDone); };
    switch (role) {
    case TaskId:
        return text(item.id.toString());
    case Title:
        return RowText::title(item.title);
    case EditTitle:
        return text(item.title);
    case Done:
        return item.isDone;
    case HasDue:
        return item.dueDate.has_value();
    case Due:
        return item.dueDate ? toDateTime(*item.dueDate) : QDateTime();
    case DueText:
        return item.dueDate ? text(label().text) : QString();
    case DueSymbol:
        return item.dueDate ? text(label().symbol) : QString();
    case DueTone:
        return item.dueDate ? text(name(label().tone)) : QString();
    case AccessibleText:
        return text_.accessible(item);
    }
    return {};
}

QHash<int, QByteArray> TaskListModel::roleNames() const {
    return {{TaskId, "taskId"},       {Title, "title"},
            {EditTitle, "editTitle"}, {Done, "done"},
            {HasDue, "hasDue"},       {Due, "due"},
            {DueText, "dueText"},     {DueSymbol, "dueSymbol"},
            {DueTone, "dueTone"},     {AccessibleText, "accessibleText"}};
}

void TaskListModel::setShowCompleted(bool show) {
    if (showCompleted_ == show)
        return;
    const auto open = static_cast<int>(shown_.size() - shown_.doneCount());
    const auto done = static_cast<int>(shown_.doneCount());
    const QScopedValueRollback announcing(announcing_, true);
    if (show)
        addRows(open, done, [this] { showCompleted_ = true; });
    else
        dropRows(open, done, [this] { showCompleted_ = false; });
    Q_EMIT showCompletedChanged();
}

void TaskListModel::setActive(bool active) {
    if (active_ == active)
        return;
    active_ = active;
    if (active_)
        renewDueLabels();
    else
        nextMinute_.stop();
    Q_EMIT activeChanged();
}

void TaskListModel::renewDueLabels() {
    if (!active_)
        return;
    const Instant now = clock_.now();
    const double wait = calendar_.nextMinute(now) - now;
    nextMinute_.start(std::chrono::milliseconds(std::lround(std::ceil(wait * 1000))));
    renewRows(0, rowCount(), {DueText, DueSymbol, DueTone});
}

void TaskListModel::follow(const ListChange& change) {
    const auto takeOver = [this] { shown_ = store_.items(); };
    const QScopedValueRollback announcing(announcing_, true);
    switch (change.kind) {
    case ListChange::Kind::inserted: {
        const auto row = rowOf(store_.items(), change.index);
        addRows(row.value_or(0), row ? 1 : 0, takeOver);
        break;
    }
    case ListChange::Kind::replaced:
        followReplaced(change.index);
        break;
    case ListChange::Kind::removed: {
        const auto row = rowOf(shown_, change.index);
        dropRows(row.value_or(0), row ? 1 : 0, takeOver);
        break;
    }
    case ListChange::Kind::reset:
        followReset();
        break;
    }
}

/// The task stays in its place of the list, but may be done now, or open again.
void TaskListModel::followReplaced(std::size_t index) {
    const auto before = rowOf(shown_, index);
    const auto after = rowOf(store_.items(), index);
    const auto takeOver = [this] { shown_ = store_.items(); };
    if (!before) {
        addRows(after.value_or(0), after ? 1 : 0, takeOver);
    } else if (!after) {
        dropRows(*before, 1, takeOver);
    } else {
        const bool moves = *before != *after;
        if (moves)
            beginMoveRows({}, *before, *before, {}, *after > *before ? *after + 1 : *after);
        takeOver();
        if (moves)
            endMoveRows();
        renewRows(*after, 1);
    }
}

/// Another list is mostly the same list: where it only has more rows than the one before, or fewer, and these
/// side by side, all others stay.
void TaskListModel::followReset() {
    const std::vector<Uuid> before = rowIds(shown_);
    const std::vector<Uuid> after = rowIds(store_.items());
    const auto front = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    const auto back = std::mismatch(before.rbegin(), std::make_reverse_iterator(front.first), after.rbegin(),
                                    std::make_reverse_iterator(front.second));
    const auto first = static_cast<int>(front.first - before.begin());
    const auto dropped = static_cast<int>(back.first.base() - front.first);
    const auto added = static_cast<int>(back.second.base() - front.second);
    const auto takeOver = [this] { shown_ = store_.items(); };
    if (dropped > 0 && added > 0) {
        beginResetModel();
        takeOver();
        endResetModel();
        return;
    }
    if (dropped > 0)
        dropRows(first, dropped, takeOver);
    else
        addRows(first, added, takeOver);
    renewRows(0, rowCount());
}

void TaskListModel::addRows(int first, int count, const Change& change) {
    if (count > 0)
        beginInsertRows({}, first, first + count - 1);
    change();
    if (count > 0)
        endInsertRows();
}

void TaskListModel::dropRows(int first, int count, const Change& change) {
    if (count > 0)
        beginRemoveRows({}, first, first + count - 1);
    change();
    if (count > 0)
        endRemoveRows();
}

void TaskListModel::renewRows(int first, int count, const QList<int>& roles) {
    if (count > 0)
        Q_EMIT dataChanged(index(first), index(first + count - 1), roles);
}

std::optional<int> TaskListModel::rowOf(const TaskList& list, std::size_t index) const {
    const std::size_t doneBefore = list.doneBefore(index);
    if (!list.isDoneAt(index))
        return static_cast<int>(index - doneBefore);
    if (!showCompleted_)
        return std::nullopt;
    return static_cast<int>(list.size() - list.doneCount() + doneBefore);
}

std::vector<Uuid> TaskListModel::rowIds(const TaskList& list) const {
    std::vector<Uuid> open;
    std::vector<Uuid> done;
    for (std::size_t index = 0; index < list.size(); ++index) {
        if (!list.isDoneAt(index))
            open.push_back(list.idAt(index));
        else if (showCompleted_)
            done.push_back(list.idAt(index));
    }
    open.insert(open.end(), done.begin(), done.end());
    return open;
}

const TodoItem& TaskListModel::itemAt(int row) const {
    const auto place = static_cast<std::size_t>(row);
    const std::size_t open = shown_.size() - shown_.doneCount();
    return shown_[place < open ? shown_.placeOfOpen(place) : shown_.placeOfDone(place - open)];
}

} // namespace quillo
