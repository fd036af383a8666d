/// Whether the program starts when the user logs in.
#pragma once

#include "base/Result.h"

#include <functional>
#include <optional>

namespace quillo {

/// Belongs to the main thread. Nothing here waits: every answer is given once, after the call has returned,
/// in the order of the calls. None is given once this is gone.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    /// Finds out whether the program starts at login, as the desktop has it now. Absent where the desktop
    /// does not tell.
    virtual void read(std::function<void(std::optional<bool> startsAtLogin)> answer) = 0;

    /// Makes the program start at login, or not. Where that fails everything stays as it was; the error says
    /// why, for the log.
    virtual void change(bool startsAtLogin, std::function<void(Outcome)> answer) = 0;
};

} // namespace quillo
