// `quillo-headless`: what `quillo-desktop --headless` goes on as.
#include "base/DataFolder.h"
#include "base/Log.h"
#include "linux/TerminationSignals.h"
#include "resident/Application.h"

#include <malloc.h>

#include <QCoreApplication>
#include <csignal>

namespace {

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
    const auto folder = quillo::dataFolder();
    if (!folder) {
        quillo::log(folder.error().message);
        return 1;
    }
    giveMemoryBack();
    std::signal(SIGPIPE, SIG_IGN); // Nobody may be reading our log any more.
    quillo::TerminationSignals::block();
    const QCoreApplication loop(argc, argv);
    quillo::Application application(*folder, std::nullopt);
    application.start();
    return QCoreApplication::exec();
}
