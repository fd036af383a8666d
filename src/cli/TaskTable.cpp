#include "cli/TaskTable.h"

#include "unicode/Text.h"

#include <algorithm>

namespace quillo::cli {

namespace {

constexpr int gap = 2;
constexpr int boxColumns = 3;
/// Titles longer than this do not push everybody's due date out of sight.
constexpr int widestAlignedTitle = 60;
/// However narrow the terminal, so much of a title is shown.
constexpr int narrowestTitle = 10;

struct Row {
    std::string number;
    const TodoItem* item = nullptr;
    std::string title;
    std::string due;
};

std::string blanks(int count) {
    return std::string(static_cast<std::size_t>(std::max(count, 0)), ' ');
}

std::string dueText(const TodoItem& item, const unicode::DateFormat& format) {
    return item.dueDate ? format.dateAndTime(*item.dueDate) : std::string();
}

Style dueStyle(const TodoItem& item, Instant now) {
    return !item.isDone && *item.dueDate < now ? Style::Red : Style::Dim;
}

} // namespace

std::string taskTable(const std::vector<control::NumberedItem>& tasks, Instant now,
                      const unicode::DateFormat& format, const Terminal& terminal) {
    std::vector<Row> rows;
    int numberColumns = 0;
    int titleColumns = 0;
    int dueColumns = 0;
    for (const control::NumberedItem& task : tasks) {
        Row row{std::to_string(task.number), &task.item, onOneLine(task.item.title),
                dueText(task.item, format)};
        numberColumns = std::max(numberColumns, static_cast<int>(row.number.size()));
        titleColumns = std::max(titleColumns, unicode::displayWidth(row.title));
        dueColumns = std::max(dueColumns, unicode::displayWidth(row.due));
        rows.push_back(std::move(row));
    }
    titleColumns = std::min(titleColumns, widestAlignedTitle);
    const int columnsBefore = numberColumns + gap + boxColumns + gap;
    const auto room = [&](const Row& row) {
        const int behind = row.due.empty() ? 0 : gap + unicode::displayWidth(row.due);
        return std::max(terminal.columns - columnsBefore - behind, narrowestTitle);
    };
    // Where the longest due date could not stand behind the column of titles, that column gets narrower.
    if (terminal.columns > 0 && dueColumns > 0)
        titleColumns = std::min(
            titleColumns, std::max(terminal.columns - columnsBefore - gap - dueColumns, narrowestTitle));

    std::string lines;
    for (const Row& row : rows) {
        // Only a terminal has an edge at which titles have to be cut; a file or another program gets them
        // whole.
        const std::string title = terminal.columns > 0 ? fitted(row.title, room(row)) : row.title;
        lines += blanks(numberColumns - static_cast<int>(row.number.size())) + row.number + blanks(gap);
        lines += row.item->isDone ? "[x]" : "[ ]";
        lines += blanks(gap) + terminal.styled(title, row.item->isDone ? Style::Dim : Style::Plain);
        if (!row.due.empty())
            lines += blanks(gap + std::max(titleColumns - unicode::displayWidth(title), 0)) +
                     terminal.styled(row.due, dueStyle(*row.item, now));
        lines += '\n';
    }
    return lines;
}

std::string taskLine(const TodoItem& item, Instant now, const unicode::DateFormat& format,
                     const Terminal& terminal) {
    std::string line = onOneLine(item.title);
    if (item.dueDate)
        line += blanks(gap) + terminal.styled(dueText(item, format), dueStyle(item, now));
    return line + '\n';
}

} // namespace quillo::cli
