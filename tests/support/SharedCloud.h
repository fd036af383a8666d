/// In-memory twin of the cloud store for several machines: each has an end of its own, with a mirror that its
/// store reads and writes, and nothing passes between mirror and cloud unless a test says so. So values
/// travel late, by halves or not at all, and notices come late, twice, without news or never.
#pragma once

#include "ports/CloudStore.h"
#include "ports/Preferences.h"
#include "support/Gate.h"

#include <cmath>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace quillo::support {

/// Belongs to the test's thread.
class SharedCloud {
public:
    /// Which of the values that several machines send stays.
    enum class Keeps {
        lastSent,     ///< as in a plain key-value store
        highestStamp, ///< as where every machine has a file of its own, and the newest one is read
    };

    explicit SharedCloud(Keeps keeps = Keeps::lastSent) : keeps_(keeps) {}

    /// Something that no machine of ours has written.
    void put(std::vector<Change> changes) {
        for (Change& change : changes) {
            if (change.value)
                values_.insert_or_assign(std::move(change.key), *std::move(change.value));
            else
                values_.erase(change.key);
        }
    }

    Keeps keeps() const { return keeps_; }
    const std::map<std::string, Value, std::less<>>& values() const { return values_; }

private:
    friend class CloudEnd;

    void send(std::vector<Change> changes) {
        if (keeps_ == Keeps::lastSent || stampIn(changes) > stamp())
            put(std::move(changes));
    }

    static double stampIn(const std::vector<Change>& changes) {
        double stamp = 0;
        for (const Change& change : changes) {
            if (change.key == preference_keys::itemsStamp && change.value)
                stamp = std::get<double>(*change.value);
        }
        return stamp;
    }
    double stamp() const {
        const auto found = values_.find(preference_keys::itemsStamp);
        const double* stamp = found == values_.end() ? nullptr : std::get_if<double>(&found->second);
        return stamp && std::isfinite(*stamp) ? *stamp : 0;
    }

    const Keeps keeps_;
    std::map<std::string, Value, std::less<>> values_;
};

/// One machine's end. Its store may use it from any thread, the rest belongs to the test's thread, on which
/// it must be made.
class CloudEnd : public CloudStore {
public:
    explicit CloudEnd(SharedCloud& cloud) : cloud_(cloud) {}

    std::optional<Value> value(std::string_view key) const override {
        letPass();
        const std::lock_guard lock(mutex_);
        const auto found = mirror_.find(key);
        return found == mirror_.end() ? std::nullopt : std::optional(found->second);
    }

    void apply(std::vector<Change> changes) override {
        letPass();
        const std::lock_guard lock(mutex_);
        ++writes_;
        for (const Change& change : changes)
            mirror_.insert_or_assign(change.key, change.value.value());
        unsent_ = std::move(changes);
    }

    void synchronize() override { letPass(); }

    /// How often the store has written here.
    int writes() const {
        const std::lock_guard lock(mutex_);
        return writes_;
    }

    /// Brings what the store wrote last to the others, unless that has happened already.
    void send() {
        const std::lock_guard lock(mutex_);
        cloud_.send(std::exchange(unsent_, {}));
    }

    /// Brings what is in the cloud into the mirror, without a notice. What was written here and not sent yet
    /// stays: it is later.
    void fetch() {
        const std::lock_guard lock(mutex_);
        if (unsent_.empty())
            mirror_ = cloud_.values();
    }

    /// Like fetch, but only one of the values makes it.
    void fetchOnly(std::string_view key) {
        const std::lock_guard lock(mutex_);
        const auto found = cloud_.values().find(key);
        if (unsent_.empty() && found != cloud_.values().end())
            mirror_.insert_or_assign(found->first, found->second);
    }

    /// While it is closed the store's queue gets no further than its next use of this end.
    Gate& gate() { return gate_; }

private:
    void letPass() const {
        if (std::this_thread::get_id() != testThread_)
            gate_.pass();
    }

    SharedCloud& cloud_;
    const std::thread::id testThread_ = std::this_thread::get_id();
    mutable Gate gate_;
    mutable std::mutex mutex_;
    std::map<std::string, Value, std::less<>> mirror_;
    std::vector<Change> unsent_;
    int writes_ = 0;
};

} // namespace quillo::support
