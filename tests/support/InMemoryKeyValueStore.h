/// In-memory twins of the key-value ports.
#pragma once

#include "ports/CloudStore.h"
#include "ports/Preferences.h"

#include <atomic>
#include <map>
#include <mutex>

namespace quillo::support {

/// Keeps values in a map and counts what was asked of it.
template <class Port>
class InMemoryKeyValueStore : public Port {
public:
    std::optional<Value> value(std::string_view key) const override {
        const std::lock_guard lock(mutex_);
        ++reads_;
        const auto found = values_.find(key);
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }

    void apply(std::vector<Change> changes) override {
        const std::lock_guard lock(mutex_);
        ++writes_;
        for (Change& change : changes) {
            if (change.value)
                values_.insert_or_assign(std::move(change.key), *std::move(change.value));
            else
                values_.erase(change.key);
        }
    }

    int reads() const {
        const std::lock_guard lock(mutex_);
        return reads_;
    }
    int writes() const {
        const std::lock_guard lock(mutex_);
        return writes_;
    }
    std::size_t size() const {
        const std::lock_guard lock(mutex_);
        return values_.size();
    }

private:
    mutable std::mutex mutex_;
    mutable int reads_ = 0;
    int writes_ = 0;
    std::map<std::string, Value, std::less<>> values_;
};

using InMemoryPreferences = InMemoryKeyValueStore<Preferences>;

/// The cloud store as one machine sees it.
class InMemoryCloudStore : public InMemoryKeyValueStore<CloudStore> {
public:
    void synchronize() override { ++synchronizations; }

    std::atomic<int> synchronizations = 0;
};

} // namespace quillo::support
