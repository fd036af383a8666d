/// A task in words, as its row shows and speaks it.
#pragma once

#include "base/Instant.h"
#include "model/TodoItem.h"
#include "ui/row/DueLabel.h"
#include "unicode/CivilCalendar.h"
#include "unicode/DateFormat.h"

#include <QString>
#include <string>
#include <string_view>

namespace quillo {

/// Writes as the user's calendar does, also after it has been assigned another zone. Belongs to one thread.
class RowText {
public:
    /// The calendar outlives it.
    explicit RowText(const unicode::CivilCalendar& calendar);

    /// The title in one line: line breaks and other control characters are blanks.
    static QString title(std::string_view title);

    DueLabel dueLabel(Instant due, Instant now, bool isDone) const;

    /// The title, after "Completed task: " if it is done, then "Due " with date and time, if it has one.
    QString accessible(const TodoItem& item) const;

private:
    const unicode::DateFormat& format() const;

    const unicode::CivilCalendar& calendar_;
    mutable unicode::DateFormat format_;
    mutable std::string formatZone_;
};

} // namespace quillo
