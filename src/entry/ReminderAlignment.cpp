#include "entry/ReminderAlignment.h"

#include <utility>

namespace quillo {

ReminderAlignment::ReminderAlignment(const ReminderAlignmentDependencies& dependencies)
    : with_(dependencies) {
    accepted_ = with_.store.observeAcceptedList([this] { start(); });
    start();
}

void ReminderAlignment::start() {
    queue_.post([list = with_.store.items(), stamp = with_.store.lastLocalStamp().get(),
                 &mainExecutor = with_.mainExecutor,
                 then = scope_.guard([this](const RemindedTasks& tasks, double at) { finish(tasks, at); })] {
        mainExecutor.post([tasks = remindedTasks(list), stamp, then]() mutable { then(tasks, stamp); });
    });
}

void ReminderAlignment::finish(const RemindedTasks& tasks, double stamp) {
    if (with_.store.lastLocalStamp().get() != stamp) {
        start();
        return;
    }
    alignReminders(with_.book, tasks, with_.calendar, with_.clock.now());
    aligned.emit();
}

} // namespace quillo
