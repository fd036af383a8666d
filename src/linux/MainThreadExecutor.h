/// Work for the main thread, from any other.
#pragma once

#include "base/Executor.h"

namespace quillo {

/// Runs what is posted from the event loop of the application object's thread. What is still waiting when
/// that object goes is dropped.
class MainThreadExecutor final : public Executor {
public:
    void post(Work task) override;
};

} // namespace quillo
