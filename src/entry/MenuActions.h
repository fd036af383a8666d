/// What menus and buttons lead to.
#pragma once

#include <functional>
#include <string>

namespace quillo {

/// All of it is there. Belongs to the main thread.
struct MenuActions {
    /// Opens a window. The token lets it take the keyboard, where the desktop asks for one; it may be empty.
    using OpenWindow = std::function<void(const std::string& activationToken)>;

    std::function<void()> quickAdd;
    std::function<void()> exportMarkdown;
    std::function<void()> exportJson;
    OpenWindow openStatistics;
    OpenWindow openSettings;
    std::function<void()> checkForUpdates;
    std::function<void()> quit;
};

} // namespace quillo
