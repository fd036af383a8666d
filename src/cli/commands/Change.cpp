#include "cli/commands/Change.h"

#include "cli/Terminal.h"

#include <cstdio>

namespace quillo::cli {

ExitCode change(const std::function<Result<NumberedItem>(TaskCommands&)>& change,
                const std::function<void(const NumberedItem&, const Session&)>& report) {
    const auto session = Session::open(Session::Purpose::Change);
    if (!session)
        return failed(session.error());
    const Result<NumberedItem> task = change((*session)->commands());
    if (!task)
        return failed(task.error());
    if (const Outcome outcome = (*session)->commit(); !outcome)
        return failed(outcome.error());
    report(*task, **session);
    return ExitCode::Done;
}

void printTitle(const NumberedItem& task, const Session&) {
    std::puts(onOneLine(task.item.title).c_str());
}

} // namespace quillo::cli
