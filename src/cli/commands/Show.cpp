#include "base/DataFolder.h"
#include "cli/DesktopProgram.h"
#include "cli/commands/Commands.h"
#include "control/Client.h"

namespace quillo::cli {

namespace {

using Window = control::Show::Window;

/// Asks the program that runs, or starts it for this.
ExitCode show(Window window) {
    const auto folder = dataFolder();
    if (!folder)
        return failed(folder.error());
    if (const auto answer = control::ask(*folder, {control::Show{window}, "UTC", "en_US"}))
        return *answer ? ExitCode::Done : failed(answer->error());
    const Outcome started = startDesktopProgram(window);
    return started ? ExitCode::Done : failed(started.error());
}

} // namespace

ExitCode open(const Arguments&) {
    return show(Window::popover);
}

ExitCode quickAdd(const Arguments&) {
    return show(Window::quickAdd);
}

ExitCode settings(const Arguments&) {
    return show(Window::settings);
}

ExitCode statistics(const Arguments&) {
    return show(Window::statistics);
}

} // namespace quillo::cli
