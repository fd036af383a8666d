/// The task list as a value whose copies cost nothing.
///
/// The tasks lie in immutable chunks that copies share; a change makes new the one chunk it touches and the
/// table of chunks, and leaves every copy taken before as it was. So a snapshot can go to another thread
/// while the list changes on, whatever its length.
///
/// A chunk has two forms, its tasks and their stored form, each made of the other when it is first asked for.
/// So reading a long list and writing it back costs little more than the one chunk in which something
/// changes.
#pragma once

#include "model/StoredItemsSurvey.h"
#include "model/TodoItem.h"
#include "ports/KeyValueStore.h"

#include <cstddef>
#include <iterator>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillo {

/// Places count from 0, the newest task. Several threads may read the same list; changing it needs it alone
/// (its copies are others). What a list hands out by reference lives until that list changes.
class TaskList {
public:
    class Iterator;

    TaskList() = default;
    explicit TaskList(std::vector<TodoItem> items);

    /// A list in the stored form; absent if it cannot be decoded.
    static std::optional<TaskList> decode(const Data& stored);

    /// The stored form; absent if a task has an instant that is not a finite number, or it would be too
    /// large. Shares the bytes that the list has already.
    std::optional<Data> encode() const;

    std::size_t size() const { return table_ ? table_->size : 0; }
    bool empty() const { return size() == 0; }

    /// How many of the tasks are done.
    std::size_t doneCount() const { return table_ ? table_->doneCount : 0; }

    /// The task at `index`, which must be less than size().
    const TodoItem& operator[](std::size_t index) const;

    /// Id and state of the task at `index`, which must be less than size(). They lie ready, unlike the rest
    /// of a task that has not been looked at yet.
    const Uuid& idAt(std::size_t index) const;
    bool isDoneAt(std::size_t index) const;

    /// How many of the tasks before `index`, which must not be greater than size(), are done.
    std::size_t doneBefore(std::size_t index) const;

    /// The place of the open task (of the done task) before which there are `number` others of its kind; it
    /// must exist. Like doneBefore, this looks at no more than one chunk.
    std::size_t placeOfOpen(std::size_t number) const;
    std::size_t placeOfDone(std::size_t number) const;

    /// The place of the first task with that id. Looks at all ids before it, 16 bytes each, side by side in
    /// memory.
    std::optional<std::size_t> indexOf(const Uuid& id) const;

    /// The places of all tasks whose ids begin with these hexadecimal digits, in upper case and without
    /// hyphens.
    std::vector<std::size_t> indexesOf(std::string_view idPrefix) const;

    /// Copies of the tasks that have a notificationID. Decodes only where one is and keeps nothing: for
    /// looking through a long list once.
    std::vector<TodoItem> itemsWithNotification() const;

    Iterator begin() const;
    Iterator end() const;

    /// Inserts a task before all others.
    void pushFront(TodoItem item);

    /// Puts `item` in the place of the task at `index`, which must be less than size(); so for remove.
    void replace(std::size_t index, TodoItem item);
    void remove(std::size_t index);

    /// Removes all tasks that are done; the others keep their order.
    void removeDone();

    /// Equal tasks in equal order.
    friend bool operator==(const TaskList& left, const TaskList& right);

private:
    class Chunk {
    public:
        explicit Chunk(std::vector<TodoItem> tasks);
        Chunk(Data source, StoredStretch stretch);

        const std::vector<Uuid>& ids() const { return ids_; } ///< packed for searching; never empty
        std::size_t size() const { return ids_.size(); }
        const std::vector<bool>& done() const { return done_; }
        std::size_t doneCount() const { return doneCount_; }

        const std::vector<TodoItem>& items() const;

        /// The stored form without brackets; absent if there is none.
        const std::optional<std::string_view>& encoded() const;

    private:
        std::vector<Uuid> ids_;
        std::vector<bool> done_; ///< of each
        std::size_t doneCount_;

        mutable std::once_flag itemsOnce_;
        mutable std::vector<TodoItem> items_;
        mutable std::once_flag encodedOnce_;
        mutable Data source_; ///< what encoded_ lies in
        mutable std::optional<std::string_view> encoded_;
    };
    using ChunkPointer = std::shared_ptr<const Chunk>;

    struct Table {
        explicit Table(std::vector<ChunkPointer> pointers);

        std::vector<ChunkPointer> chunks;
        std::vector<std::size_t> starts;     ///< the place of each chunk's first task
        std::vector<std::size_t> doneStarts; ///< how many of the tasks before it are done
        std::size_t size = 0;
        std::size_t doneCount = 0;
    };

    /// The chunk that has the task at `index`.
    std::size_t chunkAt(std::size_t index) const;

    /// The place of the task that is `done` or not and has `number` others of the same before it.
    std::size_t placeOf(bool done, std::size_t number) const;

    /// Puts one chunk of these tasks, or none if there are none, in the place of `count` chunks from
    /// `position` on.
    void exchangeChunks(std::size_t position, std::size_t count, std::vector<TodoItem> items);

    std::shared_ptr<const Table> table_; ///< null stands for the empty list, also one that was moved from
};

class TaskList::Iterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = TodoItem;
    using difference_type = std::ptrdiff_t;
    using pointer = const TodoItem*;
    using reference = const TodoItem&;

    Iterator() = default;

    reference operator*() const { return (*chunk_)->items()[place_]; }
    pointer operator->() const { return &**this; }

    Iterator& operator++() {
        if (++place_ == (*chunk_)->size()) {
            ++chunk_;
            place_ = 0;
        }
        return *this;
    }
    Iterator operator++(int) {
        Iterator before = *this;
        ++*this;
        return before;
    }

    friend bool operator==(const Iterator&, const Iterator&) = default;

private:
    friend class TaskList;
    explicit Iterator(const ChunkPointer* chunk) : chunk_(chunk) {}

    const ChunkPointer* chunk_ = nullptr;
    std::size_t place_ = 0;
};

} // namespace quillo
