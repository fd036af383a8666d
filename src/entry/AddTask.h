/// The one way from typed text to a kept task, whichever front end it was typed into.
#pragma once

#include "base/Clock.h"
#include "parser/ParserService.h"
#include "store/TodoStore.h"

#include <optional>
#include <string_view>

namespace quillo {

/// Belongs to the main thread.
class AddTask {
public:
    /// All three must outlive it.
    AddTask(const ParserService& parser, const Clock& clock, TodoStore& store)
        : parser_(parser), clock_(clock), store_(store) {}

    /// Understands the text as typed now and puts the task on top of the list. Returns the task; a blank text
    /// makes none.
    std::optional<TodoItem> add(std::string_view text);

private:
    const ParserService& parser_;
    const Clock& clock_;
    TodoStore& store_;
};

} // namespace quillo
