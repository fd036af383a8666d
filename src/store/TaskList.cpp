#include "store/TaskList.h"

#include "model/TodoItemJson.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quillo {

namespace {

/// A change copies one chunk of tasks and one table of chunk pointers; at 100,000 tasks both are then about
/// as much work.
constexpr std::size_t largestChunk = 256;

bool beginsWith(const Uuid& id, std::string_view digits) {
    constexpr std::string_view hexDigits = "0123456789ABCDEF";
    for (std::size_t place = 0; place < digits.size(); ++place) {
        if (place == 2 * id.bytes.size())
            return false;
        const int byte = id.bytes[place / 2];
        if (hexDigits[static_cast<std::size_t>(place % 2 == 0 ? byte >> 4 : byte & 0x0F)] != digits[place])
            return false;
    }
    return true;
}

/// How many of the first `count` are done.
std::size_t countDone(const std::vector<bool>& done, std::size_t count) {
    return static_cast<std::size_t>(
        std::count(done.begin(), done.begin() + static_cast<std::ptrdiff_t>(count), true));
}

} // namespace

TaskList::Chunk::Chunk(std::vector<TodoItem> tasks) {
    ids_.reserve(tasks.size());
    done_.reserve(tasks.size());
    for (const TodoItem& item : tasks) {
        ids_.push_back(item.id);
        done_.push_back(item.isDone);
    }
    doneCount_ = countDone(done_, done_.size());
    std::call_once(itemsOnce_, [&] { items_ = std::move(tasks); });
}

TaskList::Chunk::Chunk(Data source, StoredStretch stretch)
    : ids_(std::move(stretch.ids)), done_(std::move(stretch.done)),
      doneCount_(countDone(done_, done_.size())), source_(std::move(source)) {
    std::call_once(encodedOnce_, [&] { encoded_ = stretch.bytes; });
}

const std::vector<TodoItem>& TaskList::Chunk::items() const {
    std::call_once(itemsOnce_, [this] {
        std::string array = "[";
        array.append(*encoded_).push_back(']');
        items_ = decodeStoredItems(array).value(); // The survey has promised that this works.
    });
    return items_;
}

const std::optional<std::string_view>& TaskList::Chunk::encoded() const {
    std::call_once(encodedOnce_, [this] {
        if (std::optional<std::string> array = encodeStoredItems(items_)) {
            source_ = Data(*std::move(array));
            encoded_ = source_.bytes().substr(1, source_.bytes().size() - 2);
        }
    });
    return encoded_;
}

TaskList::Table::Table(std::vector<ChunkPointer> pointers) : chunks(std::move(pointers)) {
    starts.reserve(chunks.size());
    doneStarts.reserve(chunks.size());
    for (const ChunkPointer& chunk : chunks) {
        starts.push_back(size);
        doneStarts.push_back(doneCount);
        size += chunk->size();
        doneCount += chunk->doneCount();
    }
}

TaskList::TaskList(std::vector<TodoItem> items) {
    std::vector<ChunkPointer> chunks;
    for (std::size_t start = 0; start < items.size(); start += largestChunk) {
        const auto first = items.begin() + static_cast<std::ptrdiff_t>(start);
        const auto count = static_cast<std::ptrdiff_t>(std::min(largestChunk, items.size() - start));
        std::vector<TodoItem> tasks(std::make_move_iterator(first), std::make_move_iterator(first + count));
        chunks.push_back(std::make_shared<const Chunk>(std::move(tasks)));
    }
    table_ = std::make_shared<const Table>(std::move(chunks));
}

std::optional<TaskList> TaskList::decode(const Data& stored) {
    if (auto stretches = surveyStoredItems(stored.bytes(), largestChunk)) {
        std::vector<ChunkPointer> chunks;
        chunks.reserve(stretches->size());
        for (StoredStretch& stretch : *stretches)
            chunks.push_back(std::make_shared<const Chunk>(stored, std::move(stretch)));
        TaskList list;
        list.table_ = std::make_shared<const Table>(std::move(chunks));
        return list;
    }
    auto items = decodeStoredItems(stored.bytes());
    return items ? std::optional(TaskList(*std::move(items))) : std::nullopt;
}

std::optional<Data> TaskList::encode() const {
    static constexpr std::string_view comma = ",";
    Data::Pieces pieces{"["};
    if (table_) {
        pieces.reserve(2 * table_->chunks.size() + 1);
        for (const ChunkPointer& chunk : table_->chunks) {
            if (!chunk->encoded())
                return std::nullopt;
            pieces.push_back(*chunk->encoded());
            pieces.push_back(comma);
        }
        if (pieces.size() > 1)
            pieces.pop_back();
    }
    pieces.push_back("]");
    Data array(table_, std::move(pieces));
    return array.size() <= largestStoredList ? std::optional(std::move(array)) : std::nullopt;
}

const TodoItem& TaskList::operator[](std::size_t index) const {
    const std::size_t position = chunkAt(index);
    return table_->chunks[position]->items()[index - table_->starts[position]];
}

const Uuid& TaskList::idAt(std::size_t index) const {
    const std::size_t position = chunkAt(index);
    return table_->chunks[position]->ids()[index - table_->starts[position]];
}

bool TaskList::isDoneAt(std::size_t index) const {
    const std::size_t position = chunkAt(index);
    return table_->chunks[position]->done()[index - table_->starts[position]];
}

std::size_t TaskList::doneBefore(std::size_t index) const {
    if (index == size())
        return doneCount();
    const std::size_t position = chunkAt(index);
    return table_->doneStarts[position] +
           countDone(table_->chunks[position]->done(), index - table_->starts[position]);
}

std::size_t TaskList::placeOfOpen(std::size_t number) const {
    return placeOf(false, number);
}

std::size_t TaskList::placeOfDone(std::size_t number) const {
    return placeOf(true, number);
}

std::size_t TaskList::placeOf(bool done, std::size_t number) const {
    const auto before = [&](std::size_t position) {
        const std::size_t doneOnes = table_->doneStarts[position];
        return done ? doneOnes : table_->starts[position] - doneOnes;
    };
    // The last chunk with no more than that many before it has the task.
    std::size_t position = 0;
    for (std::size_t after = table_->chunks.size(); after - position > 1;) {
        const std::size_t middle = position + (after - position) / 2;
        (before(middle) <= number ? position : after) = middle;
    }
    const std::vector<bool>& marks = table_->chunks[position]->done();
    std::size_t place = 0;
    for (std::size_t others = number - before(position);; ++place) {
        if (marks[place] == done && others-- == 0)
            return table_->starts[position] + place;
    }
}

std::optional<std::size_t> TaskList::indexOf(const Uuid& id) const {
    if (!table_)
        return std::nullopt;
    for (std::size_t position = 0; position < table_->chunks.size(); ++position) {
        const std::vector<Uuid>& ids = table_->chunks[position]->ids();
        const auto found = std::find(ids.begin(), ids.end(), id);
        if (found != ids.end())
            return table_->starts[position] + static_cast<std::size_t>(found - ids.begin());
    }
    return std::nullopt;
}

std::vector<std::size_t> TaskList::indexesOf(std::string_view idPrefix) const {
    std::vector<std::size_t> found;
    if (!table_)
        return found;
    for (std::size_t position = 0; position < table_->chunks.size(); ++position) {
        const std::vector<Uuid>& ids = table_->chunks[position]->ids();
        for (std::size_t place = 0; place < ids.size(); ++place) {
            if (beginsWith(ids[place], idPrefix))
                found.push_back(table_->starts[position] + place);
        }
    }
    return found;
}

std::vector<TodoItem> TaskList::itemsWithNotification() const {
    std::vector<TodoItem> found;
    if (!table_)
        return found;
    for (const ChunkPointer& chunk : table_->chunks) {
        // A title may hold the same characters; then the chunk is looked at in vain.
        const auto& encoded = chunk->encoded();
        if (encoded && encoded->find("\"notificationID\":") == std::string_view::npos)
            continue;
        const auto decoded = encoded ? decodeStoredItems("[" + std::string(*encoded) + "]") : chunk->items();
        for (const TodoItem& item : *decoded) {
            if (item.notificationID)
                found.push_back(item);
        }
    }
    return found;
}

TaskList::Iterator TaskList::begin() const {
    return table_ ? Iterator(table_->chunks.data()) : Iterator();
}

TaskList::Iterator TaskList::end() const {
    return table_ ? Iterator(table_->chunks.data() + table_->chunks.size()) : Iterator();
}

void TaskList::pushFront(TodoItem item) {
    std::vector<TodoItem> items;
    items.push_back(std::move(item));
    const bool joins = !empty() && table_->chunks.front()->size() < largestChunk;
    if (joins) {
        const std::vector<TodoItem>& others = table_->chunks.front()->items();
        items.insert(items.end(), others.begin(), others.end());
    }
    exchangeChunks(0, joins ? 1 : 0, std::move(items));
}

void TaskList::replace(std::size_t index, TodoItem item) {
    const std::size_t position = chunkAt(index);
    std::vector<TodoItem> items = table_->chunks[position]->items();
    items[index - table_->starts[position]] = std::move(item);
    exchangeChunks(position, 1, std::move(items));
}

void TaskList::remove(std::size_t index) {
    const std::size_t position = chunkAt(index);
    std::vector<TodoItem> items = table_->chunks[position]->items();
    items.erase(items.begin() + static_cast<std::ptrdiff_t>(index - table_->starts[position]));
    exchangeChunks(position, 1, std::move(items));
}

void TaskList::removeDone() {
    if (doneCount() == 0)
        return;
    std::vector<ChunkPointer> chunks;
    for (const ChunkPointer& chunk : table_->chunks) {
        if (chunk->doneCount() == 0) {
            chunks.push_back(chunk);
        } else if (chunk->doneCount() < chunk->size()) {
            std::vector<TodoItem> open;
            std::copy_if(chunk->items().begin(), chunk->items().end(), std::back_inserter(open),
                         [](const TodoItem& item) { return !item.isDone; });
            chunks.push_back(std::make_shared<const Chunk>(std::move(open)));
        }
    }
    table_ = std::make_shared<const Table>(std::move(chunks));
}

bool operator==(const TaskList& left, const TaskList& right) {
    return left.table_ == right.table_ ||
           (left.size() == right.size() && std::equal(left.begin(), left.end(), right.begin()));
}

std::size_t TaskList::chunkAt(std::size_t index) const {
    const auto after = std::upper_bound(table_->starts.begin(), table_->starts.end(), index);
    return static_cast<std::size_t>(after - table_->starts.begin()) - 1;
}

void TaskList::exchangeChunks(std::size_t position, std::size_t count, std::vector<TodoItem> items) {
    std::vector<ChunkPointer> chunks;
    if (table_)
        chunks = table_->chunks;
    const auto first = chunks.begin() + static_cast<std::ptrdiff_t>(position);
    const auto at = chunks.erase(first, first + static_cast<std::ptrdiff_t>(count));
    if (!items.empty())
        chunks.insert(at, std::make_shared<const Chunk>(std::move(items)));
    table_ = std::make_shared<const Table>(std::move(chunks));
}

} // namespace quillo
