#include "store/Export.h"

#include "cli/Session.h"
#include "cli/WholeFile.h"
#include "cli/commands/Commands.h"
#include "unicode/DateFormat.h"
#include "unicode/SystemPlace.h"

#include <cstdio>
#include <string>

namespace quillo::cli {

ExitCode exportList(const Arguments& arguments) {
    const auto session = Session::look();
    if (!session)
        return failed(session.error());
    const TaskList& items = (*session)->items();
    const unicode::DateFormat dates(unicode::systemTimeZone(), unicode::systemLocale());
    const std::string document =
        arguments.words().front() == "markdown" ? markdownExport(items, dates) : jsonExport(items) + '\n';
    const std::string file = arguments.value("output").value_or("-");
    if (file == "-") {
        std::fwrite(document.data(), 1, document.size(), stdout);
        return ExitCode::Done;
    }
    const Outcome written = writeWholeFile(file, document);
    return written ? ExitCode::Done : failed(written.error());
}

} // namespace quillo::cli
