/// The whole list as a document, for people or for programs. What is written is the list that was handed in,
/// whatever becomes of it in the store meanwhile.
#pragma once

#include "store/TaskList.h"
#include "unicode/DateFormat.h"

#include <string>

namespace quillo {

/// A Markdown checklist in list order, open and done tasks alike, with the due dates as `dates` writes them.
/// Titles are written as they are: what is Markdown in them stays Markdown, and a line break in one breaks
/// its line. UTF-8, with a line feed at its end.
std::string markdownExport(const TaskList& list, const unicode::DateFormat& dates);

/// The export form of model/TodoItemJson.h, in list order, without a line feed at its end.
std::string jsonExport(const TaskList& list);

} // namespace quillo
