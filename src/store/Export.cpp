#include "store/Export.h"

#include "model/TodoItemJson.h"

namespace quillo {

std::string markdownExport(const TaskList& list, const unicode::DateFormat& dates) {
    std::string document = "# Quillo Export\n\n";
    for (const TodoItem& item : list) {
        document.append(item.isDone ? "- [x] " : "- [ ] ").append(item.title);
        if (item.dueDate)
            document.append("  *(").append(dates.dateAndTime(*item.dueDate)).append(")*");
        document += '\n';
    }
    return document;
}

std::string jsonExport(const TaskList& list) {
    return encodeExportedItems(list);
}

} // namespace quillo
