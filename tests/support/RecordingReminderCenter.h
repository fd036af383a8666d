/// In-memory twin of the reminder port: remembers what was asked of it.
#pragma once

#include "ports/ReminderCenter.h"

#include <string>
#include <vector>

namespace quillo::support {

class RecordingReminderCenter : public ReminderCenter {
public:
    void removePending(const std::string& identifier) override { removed.push_back(identifier); }

    std::vector<std::string> removed;
};

} // namespace quillo::support
