/// What was understood of a text, and how it is shown.
#pragma once

#include "base/Instant.h"
#include "entry/Place.h"
#include "parser/ParserService.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillo::cli {

/// A due date in seconds since 1970 as JSON text, with a fraction only if it is not whole; null where there
/// is none.
std::string dueAsJson(const std::optional<Instant>& due);

/// The members {"hint":…,"title":…,"due":…,"interpretation":…,"path":…} as JSON text without the braces; with
/// a trace, at the end "trace":[{"family":…,"rule":…,"start":…,"end":…,"text":…}] and, where a model
/// answered, "classification":{…}, in the form that `quillo resolve` reads, and "score":… if it gave one.
std::string membersOf(const Parse& parse, std::string_view text, const Trace* trace);

/// The same for people.
std::string described(const Parse& parse, std::string_view text, const Trace* trace, const Place& place);

} // namespace quillo::cli
