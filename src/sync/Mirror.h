/// What this device knows of the list that the devices keep together.
#pragma once

#include "sync/StampedBytes.h"

#include <mutex>
#include <optional>

namespace quillo {

/// The two sides between which a list travels: what was put here, for the others, and the latest that came
/// from the place where all of them leave theirs. Each is read and written as a whole, and nothing here
/// waits. Thread-safe.
///
/// It lies in memory only. What was put here is in the preferences too: who finds after a start that the
/// place has an older list than they have puts that here again.
class Mirror {
public:
    /// A list that was made here last.
    void put(StampedBytes list);

    /// What was put last; absent where there is nothing yet.
    std::optional<StampedBytes> own() const;

    /// What is to be sent: like own(), but absent while it is held back.
    std::optional<StampedBytes> outgoing() const;

    /// While it is held back, what is put here is not sent.
    void holdBack(bool held);

    /// The latest list at the place, which may be this device's; absent for none. True if it is another than
    /// before.
    bool receive(std::optional<StampedBytes> list);

    /// The list with the higher stamp of the two sides; of equal ones, that which was put here.
    std::optional<StampedBytes> latest() const;

    /// Whether the place has a later list than was put here.
    bool hasNews() const;

private:
    bool receivedIsLater() const;

    mutable std::mutex mutex_;
    std::optional<StampedBytes> own_;
    std::optional<StampedBytes> received_;
    bool held_ = false;
};

} // namespace quillo
