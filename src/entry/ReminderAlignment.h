/// Keeps the book of reminders in line with the list.
#pragma once

#include "base/CallbackScope.h"
#include "base/Clock.h"
#include "base/Executor.h"
#include "base/SerialQueue.h"
#include "base/Signal.h"
#include "reminders/AlignReminders.h"
#include "reminders/ReminderBook.h"
#include "store/TodoStore.h"
#include "unicode/CivilCalendar.h"

#include <cstdint>

namespace quillo {

/// What a ReminderAlignment works with; all of it outlives it.
struct ReminderAlignmentDependencies {
    TodoStore& store;
    ReminderBook& book;
    const Clock& clock;
    const unicode::CivilCalendar& calendar;
    Executor& mainExecutor;
};

/// From its making on, and after each list from another machine. Looking through a long list for tasks that
/// are to be reminded of takes a while, so that is done in the background; if the list changes meanwhile it
/// is done again, and if it keeps changing, on the main thread, to which this belongs.
class ReminderAlignment {
public:
    explicit ReminderAlignment(const ReminderAlignmentDependencies& dependencies);

    /// The book is in line with the list; from then on it stays so but for lists from elsewhere.
    Signal<> aligned;

private:
    void start();
    void finish(const RemindedTasks& tasks, std::uint64_t changesBefore);

    const ReminderAlignmentDependencies with_;
    std::uint64_t changes_ = 0; ///< of the list
    int attempts_ = 0;
    Connection changed_;
    Connection accepted_;
    CallbackScope scope_;
    SerialQueue queue_{"Quillo.Reminders"};
};

} // namespace quillo
