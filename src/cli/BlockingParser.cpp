#include "cli/BlockingParser.h"

#include <memory>
#include <optional>
#include <utility>

namespace quillo::cli {

Parse BlockingParser::parse(const Place& place, std::string_view text, Instant now, Trace* trace) const {
    std::optional<Parse> understood;
    const std::unique_ptr<PendingParse> pending = place.parser().parse(
        text, now, [&](const Parse& parse) { understood = parse; }, trace);
    while (!understood) {
        mainExecutor_.wait();
        mainExecutor_.run();
    }
    return *std::move(understood);
}

} // namespace quillo::cli
