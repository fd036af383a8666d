/// Libraries of ours that are loaded when they are first needed: what most users never need, and what takes
/// many other libraries along.
#pragma once

#include "base/Result.h"

#include <string_view>

namespace quillo {

/// A function of that name in a library of ours, such as "quillo-modelservers.so". The first time that loads
/// the library, which may take a while; it stays loaded until the end. Any thread. An error says why there is
/// none, for the log.
Result<void*> loadFunction(std::string_view library, const char* function);

} // namespace quillo
