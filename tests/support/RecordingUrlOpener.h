/// In-memory twin of the port that leads elsewhere: it goes nowhere.
#pragma once

#include "ports/UrlOpener.h"

#include <string>
#include <vector>

namespace quillo::support {

class RecordingUrlOpener : public UrlOpener {
public:
    void open(const std::string& address) override { opened.push_back(address); }

    std::vector<std::string> opened;
};

} // namespace quillo::support
