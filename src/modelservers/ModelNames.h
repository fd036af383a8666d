/// Which models a server has.
#pragma once

#include "base/Result.h"
#include "modelservers/Exchange.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillo {

HttpRequest modelNamesRequest(const std::string& address);

/// Reads {"data":[{"id":"…"},…]}, whatever else it holds. An error where it is none, or names no model.
Result<std::vector<std::string>> readModelNames(std::string_view answer);

/// Whether an answer that names models is llama-server's, as each of them says who owns it.
bool isOfLlamaServer(std::string_view answer);

} // namespace quillo
