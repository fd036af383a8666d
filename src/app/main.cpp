#include "app/Application.h"
#include "base/DataFolder.h"
#include "base/Log.h"
#include "base/Product.h"

#include <malloc.h>

#include <QCoreApplication>
#include <csignal>
#include <cstdio>
#include <string_view>

namespace {

constexpr const char* usage =
    "usage: quillo-desktop --headless\n"
    "\n"
    "Keeps the list, shows reminders and answers the quillo command, without a screen.\n"
    "\n"
    "  --help      shows this\n"
    "  --version   prints the version\n";

/// Saving takes a few buffers as large as the list, on other threads. By itself the allocator would come to
/// keep such blocks for the next time, in a heap for each thread: a fifth of the program's memory, for
/// something that takes milliseconds now and then.
void giveMemoryBack() {
    mallopt(M_MMAP_THRESHOLD, 64 << 10);
    mallopt(M_TRIM_THRESHOLD, 64 << 10);
    mallopt(M_ARENA_MAX, 1);
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view option = argc == 2 ? argv[1] : "";
    if (option == "--help") {
        std::fputs(usage, stdout);
        return 0;
    }
    if (option == "--version") {
        std::printf("quillo-desktop %s\n", quillo::product::version);
        return 0;
    }
    if (option != "--headless") {
        std::fputs(usage, stderr);
        return 2;
    }
    const auto folder = quillo::dataFolder();
    if (!folder) {
        quillo::log(folder.error().message);
        return 1;
    }
    giveMemoryBack();
    std::signal(SIGPIPE, SIG_IGN); // Nobody may be reading our log any more.
    quillo::TerminationSignals::block();
    const QCoreApplication loop(argc, argv);
    quillo::Application application(*folder);
    application.start();
    return QCoreApplication::exec();
}
