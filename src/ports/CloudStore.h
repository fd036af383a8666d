/// The key-value store that carries the list to the user's other machines.
#pragma once

#include "base/Signal.h"
#include "ports/KeyValueStore.h"

namespace quillo {

/// Reading and writing touch only a local mirror and return at once; the way to the other machines is the
/// implementation's own business, on threads of its own.
class CloudStore : public KeyValueStore {
public:
    /// Asks for what was written to be sent, and for news to be fetched. Returns at once. Any thread.
    virtual void synchronize() = 0;

    /// Emitted on the main thread when another machine's values may have arrived; says nothing about which.
    Signal<> externalChange;
};

} // namespace quillo
