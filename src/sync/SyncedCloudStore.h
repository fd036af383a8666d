/// The cloud store over a place that the user has chosen: each device leaves its list there.
#pragma once

#include "base/CallbackScope.h"
#include "base/Clock.h"
#include "base/Executor.h"
#include "ports/CloudStore.h"
#include "sync/Carrier.h"
#include "sync/SyncStatus.h"
#include "sync/Transfer.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace quillo {

/// Knows two keys, those of the list and of its stamp, and takes and gives them as a pair. Their values are
/// those of the latest list, by its stamp, of all devices: what an older one sends never hides a newer one.
///
/// Without a place it holds what was put into it and never reports a change. With one, exchanges begin at
/// once; there is one more after each synchronize(), and when something happens at the place.
///
/// Belongs to the main thread, but for what a CloudStore is.
class SyncedCloudStore final : public CloudStore {
public:
    /// How it fares is kept in `dataFolder`. Executor, which is the main thread's, and clock outlive this. A
    /// carrier is used at once.
    SyncedCloudStore(std::filesystem::path dataFolder, Executor& mainExecutor, const Clock& clock,
                     std::unique_ptr<Carrier> carrier = nullptr);

    /// Gives what is not sent yet a moment (patienceAtEnd).
    ~SyncedCloudStore() override;

    static constexpr std::chrono::milliseconds patienceAtEnd{1000};

    std::optional<Value> value(std::string_view key) const override;
    void apply(std::vector<Change> changes) override;
    void synchronize() override;

    /// Exchanges with that place from now on, with none if null. What was put here before is forgotten.
    void use(std::unique_ptr<Carrier> carrier);

    /// Looks at a place that is not used yet, and sends nothing there. Tells which list is the latest there,
    /// if there is one. Who is told may have the place used, by useLookedAt(), until he returns.
    void lookAt(std::unique_ptr<Carrier> carrier,
                std::function<void(const Result<std::optional<StampedBytes>>&)> told);
    void useLookedAt();

    /// While it is held back, nothing is sent; what is put here is seen here.
    void holdBack(bool held);

    /// Whether the user has the list before his eyes. A place that does not tell when something happens there
    /// is looked at more often then.
    void setShown(bool shown);

    /// Calls `told` after an exchange that began after this call. Without a place that is an error.
    void exchange(std::function<void(const Outcome&)> told);

    /// Returns when what was asked for before this call is exchanged, or the time is over: false then.
    bool await(std::chrono::milliseconds limit) const;

    bool hasPlace() const { return current_.transfer != nullptr; }
    const SyncStatus& status() const { return status_; }

    /// Emitted on the main thread after each exchange, when the status has followed.
    Signal<> exchanged;

private:
    /// A place, or none, as seen from here.
    struct Side {
        std::shared_ptr<Mirror> mirror = std::make_shared<Mirror>();
        std::shared_ptr<Transfer> transfer = nullptr;
        std::shared_ptr<std::atomic<bool>> inUse = nullptr; ///< not only looked at
    };
    struct Waiting {
        Transfer::Ticket ticket;
        std::function<void(const Outcome&)> told;
    };

    Side current() const;
    void replaceCurrent(Side side);
    Side begin(std::unique_ptr<Carrier> carrier, bool inUse);
    void take(const Mirror* from, const SyncStatus& status, bool news, Transfer::Ticket ticket);

    const std::filesystem::path dataFolder_;
    Executor& mainExecutor_;
    const Clock& clock_;
    mutable std::mutex mutex_; ///< for who uses the current side from other threads
    Side current_;
    Side lookedAt_;
    std::function<void(const Result<std::optional<StampedBytes>>&)> tellLookedAt_;
    bool held_ = false;
    bool shown_ = false;
    SyncStatus status_;
    std::vector<Waiting> waiting_;
    CallbackScope scope_;
};

} // namespace quillo
