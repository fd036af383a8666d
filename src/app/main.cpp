#include "app/Headless.h"
#include "app/Shell.h"
#include "app/StartOptions.h"
#include "base/DataFolder.h"
#include "base/Log.h"
#include "base/Product.h"
#include "linux/TerminationSignals.h"
#include "resident/Application.h"

#include <QApplication>
#include <csignal>
#include <cstdio>

namespace {

constexpr const char* usage =
    "usage: quillo-desktop [--show WINDOW | --headless]\n"
    "\n"
    "Quillo in the status bar: keeps the list, shows reminders and answers the quillo command.\n"
    "\n"
    "  --show WINDOW  begins with a window: open (the list), quick-add, settings or statistics\n"
    "  --headless     does without a screen\n"
    "  --help         shows this\n"
    "  --version      prints the version\n";

} // namespace

int main(int argc, char** argv) {
    using quillo::StartOptions;
    const std::optional<StartOptions> options = StartOptions::read(argc, argv);
    if (!options) {
        std::fputs(usage, stderr);
        return 2;
    }
    switch (options->mode) {
    case StartOptions::Mode::help:
        std::fputs(usage, stdout);
        return 0;
    case StartOptions::Mode::version:
        std::printf("quillo-desktop %s\n", quillo::product::version);
        return 0;
    case StartOptions::Mode::headless:
        return quillo::continueHeadless(argv);
    case StartOptions::Mode::screen:
        break;
    }
    if (!quillo::thereIsADisplay()) {
        quillo::log("there is no display: going on without a screen");
        return quillo::continueHeadless(argv);
    }
    const auto folder = quillo::dataFolder();
    if (!folder) {
        quillo::log(folder.error().message);
        return 1;
    }
    std::signal(SIGPIPE, SIG_IGN); // Nobody may be reading our log any more.
    quillo::TerminationSignals::block();
    quillo::prepareScreen();
    QApplication loop(argc, argv);
    quillo::Application application(*folder, options->window);
    quillo::Shell shell(application, options->window);
    application.start();
    return QApplication::exec();
}
