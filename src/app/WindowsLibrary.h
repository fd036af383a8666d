/// The library with the windows.
#pragma once

#include "app/Windows.h"

#include <functional>
#include <memory>

namespace quillo {

/// Belongs to the main thread.
class WindowsLibrary {
public:
    /// Called when the windows are made.
    using Dependencies = std::function<WindowsDependencies()>;

    explicit WindowsLibrary(Dependencies dependencies);
    ~WindowsLibrary();

    /// Loads the library the first time. Null where it cannot be loaded; the log says why.
    Windows* windows();

    /// Null before they were wanted.
    Windows* windowsSoFar() const { return windows_.get(); }

private:
    const Dependencies dependencies_;
    std::unique_ptr<Windows> windows_;
};

} // namespace quillo
