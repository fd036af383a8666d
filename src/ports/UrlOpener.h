/// Leading the user elsewhere: to a page, or into a letter.
#pragma once

#include <string>

namespace quillo {

/// Belongs to the main thread.
class UrlOpener {
public:
    virtual ~UrlOpener() = default;

    /// Hands the address (percent-encoded, such as "https://..." or "mailto:...") to the program that the
    /// user has chosen for its kind, and returns at once. Where there is none nothing happens; the log says
    /// so.
    virtual void open(const std::string& address) = 0;
};

} // namespace quillo
