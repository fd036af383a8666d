#include "linux/TerminationSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>

namespace quillo {

namespace {

sigset_t terminating() {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        // What whoever started us has had ignored (nohup) stays ignored; a blocked signal would be queued all
        // the same.
        struct sigaction action {};
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN)
            sigaddset(&set, number);
    }
    return set;
}

} // namespace

void TerminationSignals::block() {
    const sigset_t set = terminating();
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

TerminationSignals::TerminationSignals() {
    const sigset_t set = terminating();
    descriptor_ = signalfd(-1, &set, SFD_NONBLOCK | SFD_CLOEXEC);
    readable_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    QObject::connect(readable_.get(), &QSocketNotifier::activated, [this] {
        signalfd_siginfo information;
        if (read(descriptor_, &information, sizeof information) == sizeof information)
            received.emit();
    });
}

TerminationSignals::~TerminationSignals() {
    readable_.reset();
    close(descriptor_);
}

} // namespace quillo
