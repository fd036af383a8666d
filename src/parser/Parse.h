/// What a typed text was understood as.
#pragma once

#include "base/Instant.h"
#include "parser/GeneratedTodo.h"

#include <optional>
#include <string>

namespace quillo {

/// A task as typed: what to call it and when it is due.
struct ParsedTask {
    std::string title;              ///< UTF-8
    std::optional<Instant> dueDate; ///< absent where no date was found
    std::optional<std::string>
        interpretation; ///< how the date was found; absent where the text was not analysed

    friend bool operator==(const ParsedTask&, const ParsedTask&) = default;
};

/// Who had the last word.
enum class ParsePath {
    None,  ///< nobody looked: the text is empty or holds no hint of a time
    Rules, ///< the rules, which found a date
    Model, ///< a language model, which may have said that there is no date
    Miss,  ///< nobody: a hint, but no rule made a date of it, and no model answered
};

/// What a language model said about a text.
struct Classification {
    GeneratedTodo todo;
    std::optional<double> score; ///< how sure it is, 0 ... 1, where it can tell

    friend bool operator==(const Classification&, const Classification&) = default;
};

/// A parsed task, and how it came about.
struct Parse {
    ParsedTask task;
    bool hint = false; ///< the text holds a hint of a time
    ParsePath path = ParsePath::None;
    std::optional<Classification> classification = {}; ///< on the path Model only

    friend bool operator==(const Parse&, const Parse&) = default;
};

} // namespace quillo
