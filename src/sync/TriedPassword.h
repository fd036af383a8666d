/// A password that is not kept before it has proved right.
#pragma once

#include "sync/Passwords.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace quillo {

/// Finds the password that was typed for a place. What is kept and forgotten goes to the passwords behind it.
class TriedPassword final : public Passwords {
public:
    TriedPassword(WebDavFolder place, std::string password, std::shared_ptr<Passwords> behind)
        : place_(std::move(place)), password_(std::move(password)), behind_(std::move(behind)) {}

    Result<std::optional<std::string>> find(const WebDavFolder& place) override {
        {
            const std::lock_guard lock(mutex_);
            if (password_ && place == place_)
                return password_;
        }
        return behind_->find(place);
    }
    Result<Kept> keep(const WebDavFolder& place, std::string password) override {
        return behind_->keep(place, std::move(password));
    }
    Outcome forget(const WebDavFolder& place) override { return behind_->forget(place); }

    /// It has been kept: from now on those behind it say what the password is.
    void end() {
        const std::lock_guard lock(mutex_);
        password_.reset();
    }

private:
    const WebDavFolder place_;
    std::mutex mutex_;
    std::optional<std::string> password_;
    const std::shared_ptr<Passwords> behind_;
};

} // namespace quillo
