/// What is said of a task's due date.
#pragma once

#include "base/Instant.h"
#include "unicode/CivilCalendar.h"
#include "unicode/DateFormat.h"

#include <string>
#include <string_view>

namespace quillo {

enum class DueTone { done, overdue, today, later };

struct DueLabel {
    std::string text;        ///< UTF-8, in the application's language
    std::string_view symbol; ///< name of a symbol
    DueTone tone;
};

/// The text says the day as briefly as it can be told from others: "Today, 3:00 PM", "Tomorrow, 3:00 PM",
/// "Fri, 3:00 PM" within the week of `now`, "Mar 5, 3:00 PM" otherwise. What is overdue says so by symbol and
/// tone; the tone of a done task only says that it is done. `format` writes in the calendar's zone and
/// locale.
DueLabel dueLabel(Instant due, Instant now, bool isDone, const unicode::CivilCalendar& calendar,
                  const unicode::DateFormat& format);

/// "done", "overdue", "today" or "later".
std::string_view name(DueTone tone);

} // namespace quillo
