/// The outcome of something that can fail: a value, or an error in words a user can read.
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace quillo {

/// Why something could not be done: one line, without a full stop at its end.
struct Error {
    std::string message;

    friend bool operator==(const Error&, const Error&) = default;
};

template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : outcome_(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : outcome_(std::in_place_index<1>, std::move(error)) {}

    bool ok() const { return outcome_.index() == 0; }
    explicit operator bool() const { return ok(); }

    /// The value; only when ok().
    T& value() { return std::get<0>(outcome_); }
    const T& value() const { return std::get<0>(outcome_); }
    T& operator*() { return value(); }
    const T& operator*() const { return value(); }
    T* operator->() { return &value(); }
    const T* operator->() const { return &value(); }

    /// The error; only when not ok().
    const Error& error() const { return std::get<1>(outcome_); }

private:
    std::variant<T, Error> outcome_;
};

/// The outcome of something that yields nothing but success.
using Outcome = Result<std::monostate>;

inline Outcome success() {
    return std::monostate{};
}

} // namespace quillo
