/// The two JSON forms of tasks.
///
/// Stored form (preferences, cloud, backups): an array of objects, compact, keys in the order in which
/// TodoItem declares them, instants as seconds since 2001, absent fields left out. It keeps every bit of
/// every field.
///
/// Export form (files and output for other programs): pretty-printed with two blanks, keys sorted, instants
/// as ISO 8601 in UTC, floored to the second ("2026-03-05T15:00:00Z"; beyond the years 0000 to 9999 the
/// nearest inside).
///
/// Text that is not UTF-8 would make the whole list unreadable, so both forms write U+FFFD for each byte that
/// does not belong to a well-formed sequence. All functions may be called from any thread.
#pragma once

#include "model/TodoItem.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillo {

/// The most bytes a list, or one text in it, may have: 512 MiB, millions of tasks.
inline constexpr std::size_t largestStoredList = std::size_t{512} << 20;

/// Reads a list in the stored form; all of it or, where anything is wrong with it, nothing. The bytes are
/// foreign and checked to the last one: well-formed JSON and UTF-8, nothing behind the array, every required
/// key there, every key of its type (null in the place of an optional one means absent). Keys may come in any
/// order and unknown ones are skipped; of a key given twice the last counts. Values may be nested 64 deep.
/// Tasks with equal ids are all kept.
std::optional<std::vector<TodoItem>> decodeStoredItems(std::string_view bytes);

/// Writes a list in the stored form, task by task.
class StoredItemsWriter {
public:
    StoredItemsWriter();
    ~StoredItemsWriter();

    void add(const TodoItem& item);

    /// The whole list, once; absent if it cannot be expressed or could not be read again: an instant that is
    /// not a finite number, more bytes than largestStoredList.
    std::optional<std::string> finish();

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Any range of tasks in the stored form; absent as in StoredItemsWriter::finish.
template <class Items>
std::optional<std::string> encodeStoredItems(const Items& items) {
    StoredItemsWriter writer;
    for (const TodoItem& item : items)
        writer.add(item);
    return writer.finish();
}

/// Writes a list in the export form, task by task.
class ExportedItemsWriter {
public:
    ExportedItemsWriter();
    ~ExportedItemsWriter();

    /// `number`, if given, is the task's place as people count it; it is written under "number". Throws
    /// std::length_error if a text is longer than largestStoredList, which none that was stored is.
    void add(const TodoItem& item, std::optional<std::size_t> number = std::nullopt);

    /// The whole list, once, without a line end behind it.
    std::string finish();

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Any range of tasks in the export form.
template <class Items>
std::string encodeExportedItems(const Items& items) {
    ExportedItemsWriter writer;
    for (const TodoItem& item : items)
        writer.add(item);
    return writer.finish();
}

/// One task in the export form, with its number if given.
std::string encodeExportedItem(const TodoItem& item, std::optional<std::size_t> number = std::nullopt);

} // namespace quillo
