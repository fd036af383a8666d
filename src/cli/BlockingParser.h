/// Understands texts for a command, which has nothing else to do meanwhile.
#pragma once

#include "base/Instant.h"
#include "base/ManualExecutor.h"
#include "entry/Place.h"
#include "parser/ParserService.h"

#include <string_view>

namespace quillo::cli {

/// Waits for the language model of the places, where they have one.
class BlockingParser {
public:
    /// The executor is the one that the model replies through. It must outlive the parser.
    explicit BlockingParser(ManualExecutor& mainExecutor) : mainExecutor_(mainExecutor) {}

    /// Understands `text` as typed at `now` at the place. Notes in `trace`, if given, which rules
    /// contributed.
    Parse parse(const Place& place, std::string_view text, Instant now, Trace* trace = nullptr) const;

private:
    ManualExecutor& mainExecutor_;
};

} // namespace quillo::cli
