#include "base/Log.h"

#include <cstdio>
#include <string>
#include <utility>

namespace quillo {

namespace {

std::function<void(std::string_view)>& currentSink() {
    // Never gone: a thread that nobody waits for may outlive what belongs to the program.
    static auto& sink = *new std::function<void(std::string_view)>;
    return sink;
}

} // namespace

void log(std::string_view line) {
    if (const auto& sink = currentSink()) {
        sink(line);
        return;
    }
    // One write a line: lines of several threads must not run into one another.
    std::string whole = "quillo: ";
    whole.append(line).push_back('\n');
    std::fwrite(whole.data(), 1, whole.size(), stderr);
}

void setLogSink(std::function<void(std::string_view)> sink) {
    currentSink() = std::move(sink);
}

} // namespace quillo
