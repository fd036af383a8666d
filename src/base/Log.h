/// The program's log: one line an event on standard error, for whoever looks into a problem.
#pragma once

#include <functional>
#include <string_view>

namespace quillo {

/// Writes one line. Thread-safe. Never contains what a user typed.
void log(std::string_view line);

/// Sends lines elsewhere (tests); an empty sink restores standard error. Not while other threads log.
void setLogSink(std::function<void(std::string_view)> sink);

} // namespace quillo
