/// Lets callbacks die with their owner.
#pragma once

#include <memory>
#include <utility>

namespace quillo {

/// A member of whoever waits for answers; declared behind what callbacks use, so that it goes first. Belongs
/// to one thread: callbacks may travel through others, but are called on it.
class CallbackScope {
public:
    CallbackScope() = default;
    CallbackScope(const CallbackScope&) = delete;
    CallbackScope& operator=(const CallbackScope&) = delete;

    /// A callback that does what `callback` does as long as this scope lives, and nothing thereafter.
    template <class Callback>
    auto guard(Callback callback) const {
        return [alive = std::weak_ptr<const void>(token_),
                callback = std::move(callback)](auto&&... arguments) mutable {
            if (!alive.expired())
                callback(std::forward<decltype(arguments)>(arguments)...);
        };
    }

private:
    std::shared_ptr<const void> token_ = std::make_shared<char>();
};

} // namespace quillo
