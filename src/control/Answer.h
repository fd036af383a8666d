/// What the program that holds the list answers.
#pragma once

#include "base/Result.h"
#include "model/TodoItem.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillo::control {

/// A task and its number: its place in the whole list, from 1.
struct NumberedItem {
    std::size_t number = 0;
    TodoItem item;

    friend bool operator==(const NumberedItem&, const NumberedItem&) = default;
};

/// The tasks a command was about, as they are now or were at last; or why it could not be done, in words for
/// the user.
using Answer = Result<std::vector<NumberedItem>>;

/// A JSON object on a line of its own, line end included: {"numbers":[1],"tasks":[…stored form…]} or
/// {"error":"…"}.
std::string encode(const Answer& answer);

/// Reads such a line; an error too if it is none.
Answer decodeAnswer(std::string_view line);

} // namespace quillo::control
