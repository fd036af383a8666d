#include "sync/Mirror.h"

#include <utility>

namespace quillo {

void Mirror::put(StampedBytes list) {
    const std::lock_guard lock(mutex_);
    own_ = std::move(list);
}

std::optional<StampedBytes> Mirror::own() const {
    const std::lock_guard lock(mutex_);
    return own_;
}

std::optional<StampedBytes> Mirror::outgoing() const {
    const std::lock_guard lock(mutex_);
    return held_ ? std::nullopt : own_;
}

void Mirror::holdBack(bool held) {
    const std::lock_guard lock(mutex_);
    held_ = held;
}

bool Mirror::receive(std::optional<StampedBytes> list) {
    const std::lock_guard lock(mutex_);
    if (received_ == list)
        return false;
    std::swap(received_, list); // The earlier one goes after the lock.
    return true;
}

std::optional<StampedBytes> Mirror::latest() const {
    const std::lock_guard lock(mutex_);
    return receivedIsLater() ? received_ : own_;
}

bool Mirror::hasNews() const {
    const std::lock_guard lock(mutex_);
    return receivedIsLater();
}

bool Mirror::receivedIsLater() const {
    return received_ && (!own_ || own_->stamp < received_->stamp);
}

} // namespace quillo
