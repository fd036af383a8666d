/// A way to the place where the devices leave their lists for one another.
#pragma once

#include "base/Result.h"
#include "sync/DeviceFile.h"
#include "sync/Mirror.h"

#include <vector>

namespace quillo {

/// What a device has left at the place, without the list.
struct FoundDevice {
    Device device;
    double stamp = 0; ///< of its list

    friend bool operator==(const FoundDevice&, const FoundDevice&) = default;
};

/// What came of an exchange.
struct Exchange {
    std::vector<FoundDevice> devices; ///< all that could be read, by stamp, the latest first
    Outcome outcome = success();      ///< an error, for the user, if not all was sent, or the place not read
    bool changed = false;             ///< the mirror has received another list than it had
};

/// Belongs to one thread at a time, that of a Transfer mostly, but for what is said to be for any. It may
/// wait for disk or network as long as it takes.
class Carrier {
public:
    virtual ~Carrier() = default;

    /// Brings what is outgoing in the mirror to its place, unless that has it or a later one of this device,
    /// and the latest of all lists there into the mirror. Where the place cannot be read, the mirror keeps
    /// what it received.
    virtual Exchange exchange(Mirror& mirror) = 0;

    /// Returns when there may be something new at the place, or `wake` can be read: the number of an event
    /// counter (eventfd), which is left unread. Sleeps meanwhile.
    virtual void awaitNews(int wake) = 0;

    /// Whether the user has the list before his eyes, and wants to see news soon. Any thread; returns at
    /// once.
    virtual void setShown(bool) {}

    /// Nobody wants what is under way any more, nor anything later. Any thread; returns soon. What would be
    /// in the way when the process ends is not under way any more then.
    virtual void giveUp() {}

    /// What a device has left at the place, read anew. An error in words for the user.
    virtual Result<DeviceFile> fileOf(const Uuid& device) = 0;

    /// Takes away what a device has left there, if its list still has that stamp. An error in words for the
    /// user.
    virtual Outcome forget(const Uuid& device, double stamp) = 0;
};

} // namespace quillo
