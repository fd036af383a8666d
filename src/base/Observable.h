/// A value that announces its changes.
#pragma once

#include "base/Signal.h"

#include <utility>

namespace quillo {

template <class T>
class Observable {
public:
    explicit Observable(T value = T{}) : value_(std::move(value)) {}

    const T& get() const { return value_; }

    /// Compares, stores, announces: setting an equal value announces nothing.
    void set(T value) {
        if (value_ == value)
            return;
        value_ = std::move(value);
        changed_.emit(value_);
    }

    /// Calls `slot` with the new value after every change. Listening changes nothing, so a const value can be
    /// observed.
    Connection observe(std::function<void(const T&)> slot) const { return changed_.connect(std::move(slot)); }

private:
    T value_;
    mutable Signal<const T&> changed_;
};

} // namespace quillo
