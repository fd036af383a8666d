/// Asking the user where to save.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace quillo {

/// Texts are UTF-8 and translated.
struct SaveQuestion {
    std::string title;         ///< what is going to be saved
    std::string suggestedName; ///< of the file, with its ending
    std::string kind;          ///< what such files are called
    std::string ending;        ///< of such files' names, without a dot; what is typed without one gets it
};

/// Belongs to the main thread.
class SavePanel {
public:
    /// Gets the file to write, or nothing where the user does not want to save after all. The user has been
    /// asked whether a file that is there may be replaced.
    using Answer = std::function<void(std::optional<std::filesystem::path>)>;

    virtual ~SavePanel() = default;

    /// Opens a panel beside whatever else is open and returns at once. Calls `answer` once, later, on the
    /// main thread; never if the panel is destroyed before. Folders can be made on the way.
    virtual void ask(const SaveQuestion& question, Answer answer) = 0;
};

} // namespace quillo
