/// Asking the user for a folder.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace quillo {

/// Texts are UTF-8; the title is translated.
struct FolderQuestion {
    std::string title;  ///< what the folder is for
    std::string folder; ///< to begin with; empty for the desktop's choice
};

/// Belongs to the main thread.
class FolderPanel {
public:
    /// Gets a folder that is there, or nothing where the user does not want to choose after all.
    using Answer = std::function<void(std::optional<std::filesystem::path>)>;

    virtual ~FolderPanel() = default;

    /// Opens a panel beside whatever else is open and returns at once. Calls `answer` once, later, on the
    /// main thread; never if the panel is destroyed before. Folders can be made on the way.
    virtual void ask(const FolderQuestion& question, Answer answer) = 0;
};

} // namespace quillo
