#include "sqlite/SqlitePreferences.h"

#include "base/Log.h"
#include "base/SerialQueue.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <mutex>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quillo {

namespace {

using Contents = PreferencesContents;
using Changes = PreferencesChanges;

/// Why a change can never be written, if it cannot.
std::optional<Error> refusal(const Change& change) {
    std::size_t bytes = change.key.size();
    if (change.value) {
        if (const auto* number = std::get_if<double>(&*change.value); number && !std::isfinite(*number))
            return Error{"the value for " + change.key + " is no finite number and is not kept"};
        if (const auto* data = std::get_if<Data>(&*change.value))
            bytes = std::max(bytes, data->size());
        if (const auto* text = std::get_if<std::string>(&*change.value))
            bytes = std::max(bytes, text->size());
    }
    if (bytes > SqlitePreferences::maximumBytes)
        return Error{"a key or value is larger than the preferences can keep"};
    return std::nullopt;
}

} // namespace

/// What the preferences are made of: the memory, guarded by one mutex that is never held while the file is
/// used, and the file, used by the queue's thread alone.
class SqlitePreferences::Writer {
public:
    Writer(PreferencesFile file, Contents contents)
        : file_(std::move(file)), contents_(std::move(contents)) {}
    ~Writer();

    std::optional<Value> value(std::string_view key);
    void apply(std::vector<Change> changes);
    Outcome flush();
    void discard();
    void writeOnFlushOnly() { onFlushOnly_ = true; }

private:
    std::optional<Contents::mapped_type> find(std::string_view key);
    void report(const Error& error);

    // These run on the queue's thread.
    std::optional<Value> readLeftInFile(const std::string& key);
    void writePending();
    Changes takePending();
    std::optional<FileFailure> write(const Changes& changes);
    std::optional<FileFailure> startAfresh(Changes& changes);
    void rescueLargeData();
    void settle(Changes changes, const std::optional<FileFailure>& failure);
    void forget(const std::string& key);
    void gatherEverything(Changes& changes);

    PreferencesFile file_;
    std::optional<Error> lastFailure_; ///< Why what is pending could not be written; the queue thread's own.

    std::atomic<bool> onFlushOnly_ = false;

    std::mutex mutex_; ///< Guards the four below.
    Contents contents_;
    Changes pending_;           ///< What is in contents_, or gone from it, but not on disk.
    bool writeQueued_ = false;  ///< A task that will take what is pending waits in the queue.
    std::optional<Error> news_; ///< What the next flush() must report besides its own failure.

    SerialQueue queue_{"Quillo.Preferences"}; ///< Last, so that it is drained before the rest goes.
};

SqlitePreferences::Writer::~Writer() {
    // Whether or not a write is queued: one that fails is tried once more.
    const bool unwritten = [this] {
        const std::lock_guard lock(mutex_);
        return !pending_.empty();
    }();
    if (unwritten)
        queue_.post([this] { writePending(); });
}

std::optional<Value> SqlitePreferences::Writer::value(std::string_view key) {
    const std::optional<Contents::mapped_type> held = find(key);
    if (!held)
        return std::nullopt;
    if (const auto* value = std::get_if<Value>(&*held))
        return *value;
    std::optional<Value> value;
    queue_.post([this, &value, key = std::string(key)] { value = readLeftInFile(key); });
    queue_.drain();
    return value;
}

std::optional<Contents::mapped_type> SqlitePreferences::Writer::find(std::string_view key) {
    const std::lock_guard lock(mutex_);
    const auto found = contents_.find(key);
    return found != contents_.end() ? std::optional(found->second) : std::nullopt;
}

void SqlitePreferences::Writer::apply(std::vector<Change> changes) {
    for (const Change& change : changes) {
        if (const std::optional<Error> error = refusal(change)) {
            report(*error);
            return;
        }
    }
    bool post = false;
    {
        const std::lock_guard lock(mutex_);
        for (Change& change : changes) {
            if (change.value)
                contents_.insert_or_assign(change.key, *change.value);
            else if (const auto found = contents_.find(change.key); found != contents_.end())
                contents_.erase(found);
            pending_.insert_or_assign(std::move(change.key), std::move(change.value));
        }
        post = !onFlushOnly_ && !pending_.empty() && !std::exchange(writeQueued_, true);
    }
    if (post)
        queue_.post([this] { writePending(); });
}

Outcome SqlitePreferences::Writer::flush() {
    Outcome outcome = success();
    queue_.post([this, &outcome] {
        writePending();
        if (lastFailure_)
            outcome = *lastFailure_;
    });
    queue_.drain();
    const std::lock_guard lock(mutex_);
    const std::optional<Error> news = std::exchange(news_, std::nullopt);
    return outcome && news ? Outcome(*news) : outcome;
}

void SqlitePreferences::Writer::discard() {
    const std::lock_guard lock(mutex_);
    pending_.clear();
}

std::optional<Value> SqlitePreferences::Writer::readLeftInFile(const std::string& key) {
    // It may have been set or removed since it was asked for.
    const std::optional<Contents::mapped_type> held = find(key);
    if (!held)
        return std::nullopt;
    if (const auto* value = std::get_if<Value>(&*held))
        return *value;
    std::optional<Value> value;
    const std::optional<FileFailure> failure = file_.readData(key, value);
    if (failure && failure->damaged() && file_.access() == Access::ReadWrite) {
        Changes changes = takePending();
        const std::optional<FileFailure> restart = startAfresh(changes);
        settle(std::move(changes), restart);
    } else if (failure) {
        report(failure->error);
    }
    return value;
}

void SqlitePreferences::Writer::writePending() {
    Changes changes = takePending();
    if (changes.empty())
        return;
    std::optional<FileFailure> failure;
    switch (file_.access()) {
    case Access::ReadWrite:
        failure = write(changes);
        if (failure && failure->damaged())
            failure = startAfresh(changes);
        break;
    case Access::ReadOnly:
        failure = FileFailure{Error{file_.path().string() + " was opened for reading only"}};
        break;
    }
    settle(std::move(changes), failure);
}

Changes SqlitePreferences::Writer::takePending() {
    const std::lock_guard lock(mutex_);
    writeQueued_ = false;
    return std::exchange(pending_, {});
}

std::optional<FileFailure> SqlitePreferences::Writer::write(const Changes& changes) {
    if (!file_.isOpen()) { // An earlier attempt to start afresh came only half way.
        Contents known;
        if (auto failure = file_.open(known))
            return failure;
    }
    return file_.write(changes);
}

/// Moves the damaged file aside and makes a new one. `changes` are what was to be written; they become all
/// that is known.
std::optional<FileFailure> SqlitePreferences::Writer::startAfresh(Changes& changes) {
    rescueLargeData();
    gatherEverything(changes);
    if (const Outcome moved = file_.moveAside(); !moved)
        return FileFailure{moved.error()};
    return write(changes);
}

/// Brings into memory what can still be read of the data left in the file, and lets go of what cannot.
void SqlitePreferences::Writer::rescueLargeData() {
    std::vector<std::string> keys;
    {
        const std::lock_guard lock(mutex_);
        for (const auto& [key, held] : contents_) {
            if (std::holds_alternative<LeftInFile>(held))
                keys.push_back(key);
        }
    }
    for (const std::string& key : keys) {
        std::optional<Value> value;
        const bool lost = file_.readData(key, value) || !value;
        const std::lock_guard lock(mutex_);
        const auto held = contents_.find(key);
        if (held == contents_.end() || !std::holds_alternative<LeftInFile>(held->second))
            continue; // Set or removed meanwhile.
        if (lost)
            forget(key);
        else
            held->second = std::move(*value);
    }
}

/// Lets go of a value that is lost and of those that tell something about it, which are the ones under its
/// key and a dot: a time stamp without its list would claim that the list had just been emptied, and good
/// copies elsewhere would be replaced by nothing. Under the lock.
void SqlitePreferences::Writer::forget(const std::string& key) {
    std::erase_if(contents_, [&](const auto& entry) {
        return entry.first == key || (entry.first.starts_with(key + ".") && !pending_.contains(entry.first));
    });
}

/// Afterwards `changes` hold every value in memory, and the removals in case the old file stays; nothing is
/// pending.
void SqlitePreferences::Writer::gatherEverything(Changes& changes) {
    const std::lock_guard lock(mutex_);
    Changes everything;
    for (const auto& [key, held] : contents_)
        everything.emplace(key, std::get<Value>(held));
    everything.merge(pending_);
    everything.merge(changes);
    pending_.clear();
    changes = std::move(everything);
}

/// What is written is settled; what is not is pending again, unless it was changed meanwhile.
void SqlitePreferences::Writer::settle(Changes changes, const std::optional<FileFailure>& failure) {
    if (failure) {
        if (!lastFailure_ || *lastFailure_ != failure->error)
            log(failure->error.message + "; it is tried again");
        lastFailure_ = failure->error;
        const std::lock_guard lock(mutex_);
        pending_.merge(changes);
        return;
    }
    if (std::exchange(lastFailure_, std::nullopt))
        log(file_.path().string() + " is written after all");
    const std::lock_guard lock(mutex_);
    for (const auto& [key, value] : changes) {
        const auto held = contents_.find(key);
        if (value && preferences_table::isLarge(*value) && held != contents_.end() && !pending_.contains(key))
            held->second = LeftInFile{};
    }
}

void SqlitePreferences::Writer::report(const Error& error) {
    log(error.message);
    const std::lock_guard lock(mutex_);
    news_ = error;
}

Result<std::unique_ptr<SqlitePreferences>> SqlitePreferences::open(const std::filesystem::path& folder,
                                                                   Access access) {
    PreferencesFile file(folder, access);
    Contents contents;
    std::optional<FileFailure> failure = file.open(contents);
    if (failure && failure->damaged() && access == Access::ReadWrite) {
        if (const Outcome moved = file.moveAside(); !moved)
            return moved.error();
        failure = file.open(contents);
    }
    if (failure)
        return failure->error;
    auto writer = std::make_unique<Writer>(std::move(file), std::move(contents));
    return std::unique_ptr<SqlitePreferences>(new SqlitePreferences(std::move(writer)));
}

SqlitePreferences::SqlitePreferences(std::unique_ptr<Writer> writer) : writer_(std::move(writer)) {}

SqlitePreferences::~SqlitePreferences() = default;

std::optional<Value> SqlitePreferences::value(std::string_view key) const {
    return writer_->value(key);
}

void SqlitePreferences::apply(std::vector<Change> changes) {
    writer_->apply(std::move(changes));
}

Outcome SqlitePreferences::flush() {
    return writer_->flush();
}

void SqlitePreferences::discard() {
    writer_->discard();
}

void SqlitePreferences::writeOnFlushOnly() {
    writer_->writeOnFlushOnly();
}

} // namespace quillo
