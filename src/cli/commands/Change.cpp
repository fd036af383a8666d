#include "cli/commands/Change.h"

#include "base/Clock.h"
#include "cli/Ask.h"
#include "cli/TaskTable.h"
#include "cli/Terminal.h"
#include "model/TodoItemJson.h"
#include "unicode/DateFormat.h"
#include "unicode/SystemPlace.h"

#include <cstdio>
#include <utility>

namespace quillo::cli {

ExitCode change(control::Command command, const std::function<void(const Tasks&)>& report) {
    ExitCode code = ExitCode::Done;
    ask(std::move(command), [&](const control::Answer& answer) {
        if (answer) {
            report(*answer);
            std::fflush(stdout);
        } else {
            code = failed(answer.error());
        }
    });
    return code;
}

void printTitles(const Tasks& tasks) {
    for (const control::NumberedItem& task : tasks)
        std::puts(onOneLine(task.item.title).c_str());
}

void printTasks(const Tasks& tasks, bool json) {
    const unicode::DateFormat dates(unicode::systemTimeZone(), unicode::systemLocale());
    for (const auto& [number, item] : tasks) {
        if (json)
            std::puts(encodeExportedItem(item, number).c_str());
        else
            std::fputs(taskLine(item, SystemClock().now(), dates, Terminal::ofStandardOutput()).c_str(),
                       stdout);
    }
}

} // namespace quillo::cli
