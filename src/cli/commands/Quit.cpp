#include "base/DataFolder.h"
#include "cli/commands/Commands.h"
#include "control/Client.h"

namespace quillo::cli {

ExitCode quit(const Arguments&) {
    const auto folder = dataFolder();
    if (!folder)
        return failed(folder.error());
    const auto answer = control::ask(*folder, {control::Quit{}, "UTC", "en_US"});
    if (answer && !*answer)
        return failed(answer->error());
    return ExitCode::Done; // Where nobody runs there is nothing left to do.
}

} // namespace quillo::cli
