/// Typed values under string keys: the common shape of the preferences and of the cloud store.
#pragma once

#include "ports/Data.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quillo {

/// A stored value. `bool` and `std::int64_t` are different types, as are text (UTF-8) and data.
using Value = std::variant<Data, std::int64_t, double, bool, std::string>;

/// What to do with one key: set it to a value, or remove it.
struct Change {
    std::string key;
    std::optional<Value> value;
};

/// Thread-safe. Reads see all earlier writes of this process. Failures are not reported here: what cannot be
/// read is absent, what cannot be written leaves the last good state (the implementation logs it).
class KeyValueStore {
public:
    virtual ~KeyValueStore() = default;

    /// The value under `key`, of whichever type it has.
    virtual std::optional<Value> value(std::string_view key) const = 0;

    /// Applies all changes together: a reader, also one after a crash, sees all of them or none. Does not
    /// wait for disk or network.
    virtual void apply(std::vector<Change> changes) = 0;

    /// The value under `key` if it has that type; a value of another type is as good as absent.
    std::optional<Data> data(std::string_view key) const { return typed<Data>(key); }
    std::optional<std::int64_t> integer(std::string_view key) const { return typed<std::int64_t>(key); }
    std::optional<double> real(std::string_view key) const { return typed<double>(key); }
    std::optional<bool> boolean(std::string_view key) const { return typed<bool>(key); }
    std::optional<std::string> text(std::string_view key) const { return typed<std::string>(key); }

    void set(std::string_view key, Value value) { apply({{std::string(key), std::move(value)}}); }
    void remove(std::string_view key) { apply({{std::string(key), std::nullopt}}); }

private:
    template <class T>
    std::optional<T> typed(std::string_view key) const {
        std::optional<Value> found = value(key);
        if (!found || !std::holds_alternative<T>(*found))
            return std::nullopt;
        return std::get<T>(std::move(*found));
    }
};

} // namespace quillo
