/// A quick pass over a stored list that checks it and finds its tasks, but leaves their texts and times where
/// they are.
#pragma once

#include "base/Uuid.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace quillo {

/// Neighbouring tasks of a stored list.
struct StoredStretch {
    std::string_view bytes; ///< their objects with commas in between: an array but for its brackets
    std::vector<Uuid> ids;  ///< in list order
    std::vector<bool> done; ///< of each, in the same order
};

/// Finds the stretches of `largest` tasks (the last may be shorter) of a list in the very form that
/// StoredItemsWriter gives it; the bytes they refer to are those given. decodeStoredItems reads every such
/// list, and each stretch between brackets. Absent for anything else, be it damaged or only written in
/// another way: decodeStoredItems can tell.
std::optional<std::vector<StoredStretch>> surveyStoredItems(std::string_view bytes, std::size_t largest);

} // namespace quillo
