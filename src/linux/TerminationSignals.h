/// The signals that ask a process to end.
#pragma once

#include "base/Signal.h"

#include <QSocketNotifier>
#include <memory>

namespace quillo {

/// SIGTERM, SIGINT and SIGHUP, as far as they are not ignored anyway, told from the event loop instead of in
/// the middle of anything. One a process, after block(); from then on these signals end nothing by
/// themselves.
class TerminationSignals {
public:
    TerminationSignals();
    ~TerminationSignals();

    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Blocks these signals in the calling thread and those it starts from then on: to be called before there
    /// are others.
    static void block();

    Signal<> received;

private:
    int descriptor_;
    std::unique_ptr<QSocketNotifier> readable_;
};

} // namespace quillo
