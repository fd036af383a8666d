/// What is said to a server, and what it answers.
#pragma once

#include "base/Result.h"

#include <optional>
#include <string>

namespace quillo {

struct HttpRequest {
    std::string url;       ///< http or https
    std::string body = {}; ///< JSON that is posted; empty: the address is read
};

/// Requests to a server, one after another. Asked on the thread of the transfers.
class Exchange {
public:
    virtual ~Exchange() = default;

    virtual HttpRequest first() = 0;

    /// What follows the answer to the request before: another request, or nothing. The answer is JSON by its
    /// content type; an error says in words for the user why there is none, and what follows it is not sent
    /// where time is up.
    virtual std::optional<HttpRequest> next(const Result<std::string>& answer) = 0;
};

} // namespace quillo
