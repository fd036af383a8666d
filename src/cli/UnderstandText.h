/// What is done of a command before the list is taken hold of: nobody has to wait for a language model that
/// somebody else has asked.
#pragma once

#include "base/Result.h"
#include "control/Request.h"
#include "entry/AddTask.h"

#include <optional>

namespace quillo::cli {

/// What the request's text means, as typed now; absent where it has none that is to be understood. Waits for
/// a language model, where that has to be asked. Its task is then named by the identifier in the request: by
/// the time of an answer, the number may be another one's. An error where there is no such task.
Result<std::optional<UnderstoodText>> understandText(control::Request& request);

} // namespace quillo::cli
