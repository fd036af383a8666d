#include "entry/TaskCommands.h"

#include "entry/Identifiers.h"
#include "unicode/Text.h"

#include <charconv>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillo {

namespace {

using control::Answer;
using control::NumberedItem;

/// Upper-case hexadecimal digits without hyphens; absent where the text holds anything else.
std::optional<std::string> hexDigits(std::string_view text) {
    std::string digits;
    for (char c : text) {
        if (c >= 'a' && c <= 'f')
            c = static_cast<char>(c - ('a' - 'A'));
        if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'))
            digits += c;
        else if (c != '-')
            return std::nullopt;
    }
    return digits;
}

std::optional<std::size_t> wholeNumber(std::string_view text) {
    std::size_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

/// Says how long a list is. An empty one may be one that could not be read: nothing is said of that here.
std::string lengthOf(const TaskList& items) {
    if (items.empty())
        return {};
    return "; the list has " + std::to_string(items.size()) + (items.size() == 1 ? " task" : " tasks");
}

const Error noText{"a task needs a text"};

Answer about(NumberedItem task) {
    return std::vector<NumberedItem>{std::move(task)};
}

AddTask::Added toldAsAnswer(TaskCommands::Reply reply) {
    return [reply = std::move(reply)](const std::optional<TodoItem>& item) {
        reply(item ? about({1, *item}) : noText);
    };
}

} // namespace

void TaskCommands::answer(const control::Request& request, Reply reply) {
    const Result<std::shared_ptr<const Place>> place = places_.at(request.zone, request.locale);
    if (!place) {
        reply(place.error());
        return;
    }
    struct Visitor {
        TaskCommands& commands;
        const std::shared_ptr<const Place>& place;
        Reply& reply;

        void operator()(const control::Add& add) const { commands.apply(add, place, std::move(reply)); }
        void operator()(const control::SetDone& set) const { reply(commands.apply(set)); }
        void operator()(const control::Edit& edit) const { reply(commands.apply(edit)); }
        void operator()(const control::Delete& remove) const { reply(commands.apply(remove)); }
        void operator()(const control::ClearCompleted&) const { reply(commands.clearCompleted()); }
        void operator()(const control::Remind& remind) const {
            commands.apply(remind, place, std::move(reply));
        }
        void operator()(const control::Restore& restore) const {
            commands.with_.store.restoreEarlier(
                restore.which, [reply = std::move(reply)](const Outcome& outcome) {
                    reply(outcome ? Answer(std::vector<NumberedItem>{}) : Answer(outcome.error()));
                });
        }
        void operator()(const control::UseModel&) const {
            reply(Error{"there is no choice of language models"});
        }
        void operator()(const control::UseSync&) const { reply(Error{"there is nothing to keep in step"}); }
        void operator()(const control::SyncNow&) const { reply(Error{"there is nothing to keep in step"}); }
        void operator()(const control::ForgetDevice&) const {
            reply(Error{"there is nothing to keep in step"});
        }
        void operator()(const control::Show&) const { reply(Error{"there is no screen"}); }
        void operator()(const control::Quit&) const { reply(Error{"there is nothing that could quit"}); }
    };
    std::visit(Visitor{*this, *place, reply}, request.command);
}

void TaskCommands::answer(const control::Request& request, const UnderstoodText& text, Reply reply) {
    if (std::holds_alternative<control::Add>(request.command)) {
        with_.addTask.add(text, toldAsAnswer(std::move(reply)));
    } else if (const auto* toRemind = std::get_if<control::Remind>(&request.command)) {
        const Result<NumberedItem> found = find(toRemind->task);
        reply(found ? remind(found->item.id, toRemind->when, text.meaning) : Answer(found.error()));
    } else {
        answer(request, std::move(reply));
    }
}

NumberedItem TaskCommands::numbered(std::size_t index) const {
    return {index + 1, with_.store.items()[index]};
}

Result<NumberedItem> TaskCommands::find(std::string_view task) const {
    const TaskList& items = with_.store.items();
    if (const auto number = wholeNumber(task); number && *number >= 1 && *number <= items.size()) {
        // Operations go by identifier. Where two tasks share one, they would act on the first.
        if (items.indexOf(items[*number - 1].id) != *number - 1)
            return Error{"task " + std::string(task) +
                         " has the identifier of another one; change that one first"};
        return numbered(*number - 1);
    }

    const std::optional<std::string> prefix = hexDigits(task);
    if (!prefix || prefix->size() < shortestPrefix)
        return Error{(task.empty() ? "no task \"\"" : "no task " + std::string(task)) + lengthOf(items)};
    const std::vector<std::size_t> found = items.indexesOf(*prefix);
    if (found.empty())
        return Error{"no task has an identifier that begins with " + std::string(task)};
    for (const std::size_t index : found) {
        if (items[index].id != items[found.front()].id)
            return Error{"several tasks have an identifier that begins with " + std::string(task)};
    }
    return numbered(found.front());
}

void TaskCommands::apply(const control::Add& add, const std::shared_ptr<const Place>& place, Reply reply) {
    with_.addTask.add(add.text, place, toldAsAnswer(std::move(reply)));
}

Answer TaskCommands::apply(const control::SetDone& set) {
    const Result<NumberedItem> found = find(set.task);
    if (!found)
        return found.error();
    if (found->item.isDone != set.done)
        with_.store.toggle(found->item.id);
    return about(numbered(found->number - 1));
}

Answer TaskCommands::apply(const control::Edit& edit) {
    const std::u16string utf16 = unicode::toUtf16(edit.text);
    std::string title = unicode::toUtf8(unicode::trim(utf16));
    if (title.empty())
        return noText;
    Result<NumberedItem> found = find(edit.task);
    if (!found)
        return found.error();
    if (found->item.title != title) {
        found->item.title = std::move(title);
        with_.store.update(found->item);
        // The reminder that is still to come says what the task is called.
        if (found->item.notificationID && found->item.dueDate && with_.clock.now() < *found->item.dueDate)
            with_.setReminder.set(found->item.id, found->item.dueDate);
    }
    return about(numbered(found->number - 1));
}

Answer TaskCommands::apply(const control::Delete& remove) {
    Result<NumberedItem> found = find(remove.task);
    if (!found)
        return found.error();
    with_.store.remove(found->item.id);
    return about(std::move(*found));
}

Answer TaskCommands::clearCompleted() {
    std::vector<NumberedItem> done;
    std::size_t number = 0;
    for (const TodoItem& item : with_.store.items()) {
        ++number;
        if (item.isDone)
            done.push_back({number, item});
    }
    if (!done.empty())
        with_.store.clearCompleted();
    return done;
}

void TaskCommands::apply(const control::Remind& remind, const std::shared_ptr<const Place>& place,
                         Reply reply) {
    // Now: by the time of an answer its number may be another's.
    const Result<NumberedItem> found = find(remind.task);
    if (!found) {
        reply(found.error());
        return;
    }
    const Uuid task = found->item.id;
    if (remind.when.empty()) {
        reply(setDueDate(task, std::nullopt));
        return;
    }
    const auto entry = waiting_.emplace(waiting_.end());
    // The place is kept until the reply.
    auto parse = place->parser().parse(
        remind.when, with_.clock.now(),
        [this, place, entry, task, when = remind.when, reply = std::move(reply)](const Parse& parsed) {
            const std::unique_ptr<PendingParse> ended = std::move(*entry);
            waiting_.erase(entry);
            reply(this->remind(task, when, parsed.task));
        });
    if (parse)
        *entry = std::move(parse);
}

void TaskCommands::giveUpWaiting() {
    while (!waiting_.empty())
        waiting_.front()->giveUp();
}

Answer TaskCommands::remind(const Uuid& task, const std::string& when, const ParsedTask& meaning) {
    return meaning.dueDate ? setDueDate(task, meaning.dueDate)
                           : Error{"there is no date in \"" + when + "\""};
}

Answer TaskCommands::setDueDate(const Uuid& task, std::optional<Instant> dueDate) {
    const std::optional<std::size_t> index = with_.store.indexOf(task);
    if (!index)
        return Error{"the task is gone"};
    const TodoItem& item = with_.store.items()[*index];
    if (dueDate || item.dueDate || item.notificationID)
        with_.setReminder.set(task, dueDate);
    return about(numbered(*index));
}

} // namespace quillo
