/// Where language-model servers are found that nobody has named.
#pragma once

#include <string>
#include <vector>

namespace quillo {

/// Where Ollama ($OLLAMA_HOST, if that is set and an address), llama-server (two places, by its version) and
/// LM Studio listen, as readServerAddress() gives it. All on this machine, unless the user's environment says
/// otherwise.
std::vector<std::string> wellKnownServers();

} // namespace quillo
