/// The rows of the task list.
#pragma once

#include "base/Clock.h"
#include "store/TaskList.h"
#include "store/TodoStore.h"
#include "ui/row/RowText.h"
#include "unicode/CivilCalendar.h"

#include <QtQml/qqmlregistration.h>

#include <QAbstractListModel>
#include <QList>
#include <QTimer>
#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace quillo {

/// The open tasks in the list's order, then, if they are to be seen, the done ones in theirs. Every change of
/// the list becomes the fewest rows that come, go or move, so that a view keeps its place; none of them looks
/// at more of a long list than the store does itself.
///
/// Belongs to the main thread.
class TaskListModel final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by PopoverModel.")

    Q_PROPERTY(bool showCompleted READ showCompleted WRITE setShowCompleted NOTIFY showCompletedChanged)
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged)

public:
    /// In QML by the same names, beginning with a small letter.
    enum Role {
        TaskId = Qt::UserRole, ///< text: what PopoverModel's functions take
        Title,                 ///< text in one line: line breaks are blanks
        EditTitle,             ///< text: the title as it is
        Done,                  ///< boolean
        HasDue,                ///< boolean
        Due,                   ///< QDateTime; invalid where there is no due date
        DueText,               ///< text: what follows of the due date; empty where there is none
        DueSymbol,             ///< text: name of a symbol
        DueTone,               ///< text: "done", "overdue", "today" or "later"
        AccessibleText,        ///< text: the whole row in words
    };
    Q_ENUM(Role)

    /// All three outlive the model; the calendar may be assigned another zone.
    TaskListModel(TodoStore& store, const Clock& clock, const unicode::CivilCalendar& calendar);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Whether done tasks have rows.
    bool showCompleted() const { return showCompleted_; }
    void setShowCompleted(bool show);

    /// Whether somebody is looking. What is said of due dates is renewed when that begins, and then each
    /// minute; otherwise nothing runs.
    bool active() const { return active_; }
    void setActive(bool active);

    /// For when the clock or the zone has been set.
    void renewDueLabels();

    /// Rows are just being announced: the list must not change now.
    bool isAnnouncing() const { return announcing_; }

Q_SIGNALS:
    void showCompletedChanged();
    void activeChanged();

private:
    using Change = std::function<void()>; ///< makes `shown_`, or what of it is shown, another

    void follow(const ListChange& change);
    void followReplaced(std::size_t index);
    void followReset();
    void addRows(int first, int count, const Change& change);
    void dropRows(int first, int count, const Change& change);
    void renewRows(int first, int count, const QList<int>& roles = {});

    /// The row of the task at that place of a list, if it has one.
    std::optional<int> rowOf(const TaskList& list, std::size_t index) const;
    std::vector<Uuid> rowIds(const TaskList& list) const;
    const TodoItem& itemAt(int row) const;

    TodoStore& store_;
    const Clock& clock_;
    const unicode::CivilCalendar& calendar_;
    RowText text_;
    TaskList shown_; ///< the list as the rows show it: while a change is announced, still the one before
    bool showCompleted_ = false;
    bool active_ = false;
    bool announcing_ = false;
    QTimer nextMinute_;
    Connection following_;
};

} // namespace quillo
