/// Tasks in aligned columns: number, box, title, due date.
#pragma once

#include "cli/Terminal.h"
#include "control/Answer.h"
#include "unicode/DateFormat.h"

#include <string>
#include <vector>

namespace quillo::cli {

/// One line a task. On a terminal long titles are cut where the line would not fit, what is done is dim, and
/// due dates that have passed are red.
std::string taskTable(const std::vector<control::NumberedItem>& tasks, Instant now,
                      const unicode::DateFormat& format, const Terminal& terminal);

/// One task's title and, if it has one, due date.
std::string taskLine(const TodoItem& item, Instant now, const unicode::DateFormat& format,
                     const Terminal& terminal);

} // namespace quillo::cli
