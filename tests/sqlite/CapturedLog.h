/// Keeps what is logged while it lives. Make it before the threads that log and let it go after them.
#pragma once

#include "base/Log.h"

#include <mutex>
#include <string>
#include <vector>

namespace quillo::support {

class CapturedLog {
public:
    CapturedLog() {
        setLogSink([this](std::string_view line) {
            const std::lock_guard lock(mutex_);
            lines_.emplace_back(line);
        });
    }
    ~CapturedLog() { setLogSink(nullptr); }
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;

    std::vector<std::string> lines() const {
        const std::lock_guard lock(mutex_);
        return lines_;
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
};

} // namespace quillo::support
