#include "entry/AddTask.h"

#include <utility>

namespace quillo {

void AddTask::add(std::string_view text, const std::shared_ptr<const Place>& place, Added added) {
    const Instant now = clock_.now();
    const auto entry = begin(now, std::move(added));
    // The place is kept until the reply.
    entry->parse =
        place->parser().parse(text, now, [this, place, weak = std::weak_ptr(entry)](const Parse& parse) {
            if (const auto understoodEntry = weak.lock())
                understood(understoodEntry, parse.task);
        });
}

void AddTask::add(const UnderstoodText& text, Added added) {
    understood(begin(text.typedAt, std::move(added)), text.meaning);
}

std::shared_ptr<AddTask::Entry> AddTask::begin(Instant typedAt, Added added) {
    const auto entry = std::make_shared<Entry>();
    entry->task.id = Uuid::random();
    entry->task.createdAt = typedAt;
    entry->added = std::move(added);
    waiting_.push_back(entry);
    return entry;
}

void AddTask::understood(const std::shared_ptr<Entry>& entry, const ParsedTask& parsed) {
    const std::unique_ptr<PendingParse> ended = std::move(entry->parse);
    if (parsed.title.empty()) {
        std::erase(waiting_, entry);
        entry->added(std::nullopt);
        return;
    }
    entry->task.title = parsed.title;
    entry->task.dueDate = parsed.dueDate;
    if (!parsed.dueDate) {
        keep(entry);
        return;
    }
    reminders_.schedule(entry->task, scope_.guard([this, entry](std::optional<std::string> identifier) {
        entry->task.notificationID = std::move(identifier);
        keep(entry);
    }));
}

void AddTask::addWaiting() {
    while (!waiting_.empty()) {
        const std::shared_ptr<Entry> entry = waiting_.front();
        if (entry->parse)
            entry->parse->giveUp();
        else
            keep(entry);
    }
}

/// Puts the task on the list, unless it is there.
void AddTask::keep(const std::shared_ptr<Entry>& entry) {
    if (std::erase(waiting_, entry) > 0) {
        store_.add(entry->task);
        entry->added(entry->task);
    }
}

} // namespace quillo
