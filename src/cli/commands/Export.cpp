#include "store/Export.h"

#include "cli/Session.h"
#include "cli/Terminal.h"
#include "cli/WholeFile.h"
#include "cli/commands/Commands.h"
#include "unicode/DateFormat.h"
#include "unicode/SystemPlace.h"

#include <unistd.h>

#include <cstdio>
#include <string>
#include <string_view>

namespace quillo::cli {

namespace {

/// A terminal would obey what titles may hold; a file or another program gets every byte.
void print(std::string_view document) {
    if (!isatty(STDOUT_FILENO)) {
        std::fwrite(document.data(), 1, document.size(), stdout);
        return;
    }
    while (!document.empty()) { // It ends with a line feed.
        const std::size_t end = document.find('\n');
        std::puts(onOneLine(document.substr(0, end)).c_str());
        document.remove_prefix(end + 1);
    }
}

} // namespace

ExitCode exportList(const Arguments& arguments) {
    const auto session = Session::look();
    if (!session)
        return failed(session.error());
    if ((*session)->listIsDamaged()) // An empty document in the place of a good one would be the worse loss.
        return failed({"the task list cannot be read, so nothing is exported"});
    const TaskList& items = (*session)->items();
    const unicode::DateFormat dates(unicode::systemTimeZone(), unicode::systemLocale());
    const std::string document =
        arguments.words().front() == "markdown" ? markdownExport(items, dates) : jsonExport(items) + '\n';
    const std::string file = arguments.value("output").value_or("-");
    if (file == "-") {
        print(document);
        return ExitCode::Done;
    }
    const Outcome written = writeWholeFile(file, document);
    return written ? ExitCode::Done : failed(written.error());
}

} // namespace quillo::cli
