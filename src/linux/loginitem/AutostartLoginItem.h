/// Starting at login by a file in the user's autostart folder.
#pragma once

#include "base/CallbackScope.h"
#include "base/Executor.h"
#include "base/SerialQueue.h"
#include "linux/loginitem/AutostartEntry.h"
#include "ports/LoginItem.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace quillo {

/// Reads and writes on a thread of its own. Going, it waits until what was asked for is written.
class AutostartLoginItem final : public LoginItem {
public:
    /// `mainExecutor` posts to the main thread and outlives this.
    AutostartLoginItem(const std::filesystem::path& folder, Executor& mainExecutor);

    void read(std::function<void(std::optional<bool>)> answer) override;
    void change(bool startsAtLogin, std::function<void(Outcome)> answer) override;

private:
    const AutostartEntry entry_;
    Executor& mainExecutor_;
    CallbackScope scope_;
    SerialQueue queue_{"Quillo.LoginItem"}; ///< last, so that it is drained before what it works on goes
};

} // namespace quillo
