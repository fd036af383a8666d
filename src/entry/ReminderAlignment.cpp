#include "entry/ReminderAlignment.h"

#include <utility>

namespace quillo {

namespace {

constexpr int mostAttempts = 5;

} // namespace

ReminderAlignment::ReminderAlignment(const ReminderAlignmentDependencies& dependencies)
    : with_(dependencies), changed_(with_.store.observeList([this](const ListChange&) { ++changes_; })),
      accepted_(with_.store.observeAcceptedList([this] { start(); })) {
    start();
}

void ReminderAlignment::start() {
    queue_.post([list = with_.store.items(), changes = changes_, &mainExecutor = with_.mainExecutor,
                 then = scope_.guard(
                     [this](const RemindedTasks& tasks, std::uint64_t before) { finish(tasks, before); })] {
        mainExecutor.post([tasks = remindedTasks(list.itemsWithNotification()), changes, then]() mutable {
            then(tasks, changes);
        });
    });
}

void ReminderAlignment::finish(const RemindedTasks& tasks, std::uint64_t changesBefore) {
    const bool current = changes_ == changesBefore;
    if (!current && ++attempts_ < mostAttempts) {
        start();
        return;
    }
    attempts_ = 0;
    alignReminders(with_.book, current ? tasks : remindedTasks(with_.store.items().itemsWithNotification()),
                   with_.calendar, with_.clock.now());
    aligned.emit();
}

} // namespace quillo
