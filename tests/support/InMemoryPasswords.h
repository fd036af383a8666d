/// Passwords that a test has chosen.
#pragma once

#include "sync/Passwords.h"

#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace quillo::support {

/// Of one place. Thread-safe.
class InMemoryPasswords final : public Passwords {
public:
    Result<std::optional<std::string>> find(const WebDavFolder&) override {
        const std::lock_guard lock(mutex_);
        return password_;
    }
    Result<Kept> keep(const WebDavFolder&, std::string password) override {
        const std::lock_guard lock(mutex_);
        password_ = std::move(password);
        return Kept::UntilTheEnd;
    }
    Outcome forget(const WebDavFolder&) override {
        const std::lock_guard lock(mutex_);
        password_.reset();
        return success();
    }

private:
    std::mutex mutex_;
    std::optional<std::string> password_;
};

} // namespace quillo::support
