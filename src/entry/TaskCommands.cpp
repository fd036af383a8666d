#include "entry/TaskCommands.h"

#include "unicode/Text.h"

#include <charconv>
#include <optional>
#include <string>

namespace quillo {

namespace {

constexpr std::size_t shortestPrefix = 8;

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

} // namespace

NumberedItem TaskCommands::numbered(std::size_t index) const {
    return {index + 1, store_.items()[index]};
}

Result<NumberedItem> TaskCommands::find(std::string_view task) const {
    const TaskList& items = store_.items();
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
    std::optional<std::size_t> found;
    for (std::size_t index = 0; index < items.size(); ++index) {
        if (!hexDigits(items[index].id.toString())->starts_with(*prefix))
            continue;
        if (found && items[*found].id != items[index].id)
            return Error{"several tasks have an identifier that begins with " + std::string(task)};
        if (!found)
            found = index;
    }
    if (!found)
        return Error{"no task has an identifier that begins with " + std::string(task)};
    return numbered(*found);
}

Result<NumberedItem> TaskCommands::add(std::string_view text) {
    std::optional<TodoItem> item = addTask_.add(text);
    if (!item)
        return Error{"a task needs a text"};
    return NumberedItem{1, std::move(*item)};
}

Result<NumberedItem> TaskCommands::setDone(std::string_view task, bool done) {
    Result<NumberedItem> found = find(task);
    if (!found || found->item.isDone == done)
        return found;
    store_.toggle(found->item.id);
    return numbered(found->number - 1);
}

Result<NumberedItem> TaskCommands::edit(std::string_view task, std::string_view text) {
    const std::u16string utf16 = unicode::toUtf16(text);
    std::string title = unicode::toUtf8(unicode::trim(utf16));
    if (title.empty())
        return Error{"a task needs a text"};
    Result<NumberedItem> found = find(task);
    if (found && found->item.title != title) {
        found->item.title = std::move(title);
        store_.update(found->item);
    }
    return found;
}

Result<NumberedItem> TaskCommands::remove(std::string_view task) {
    Result<NumberedItem> found = find(task);
    if (found)
        store_.remove(found->item.id);
    return found;
}

std::vector<TodoItem> TaskCommands::clearCompleted() {
    std::vector<TodoItem> done;
    for (const TodoItem& item : store_.items()) {
        if (item.isDone)
            done.push_back(item);
    }
    if (!done.empty())
        store_.clearCompleted();
    return done;
}

} // namespace quillo
