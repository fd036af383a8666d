/// What menus lead to.
#pragma once

#include <functional>

namespace quillo {

/// Belongs to the main thread. An action that is not there is shown and cannot be chosen.
struct MenuActions {
    std::function<void()> quickAdd;
    std::function<void()> exportMarkdown;
    std::function<void()> exportJson;
    std::function<void()> openStatistics;
    std::function<void()> openSettings;
    std::function<void()> checkForUpdates;
    std::function<void()> quit;
};

} // namespace quillo
