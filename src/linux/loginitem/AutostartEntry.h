/// The file by which desktops start a program at login.
#pragma once

#include "base/Result.h"

#include <filesystem>

namespace quillo {

/// org.quillo.Quillo.desktop in the user's autostart folder
/// (https://specifications.freedesktop.org/autostart-spec/latest). For threads that may wait for the disk.
class AutostartEntry {
public:
    /// `folder` is the autostart folder; it need not be there.
    explicit AutostartEntry(const std::filesystem::path& folder);

    /// The user's, by the environment.
    static std::filesystem::path folderOfTheUser();

    /// Whether the file is there and tells desktops to start the program; the user, or the desktop's
    /// settings, may have switched it off in there.
    bool isOn() const;

    /// Writes the file, and makes the folder where it is missing. The file has its name only once it is
    /// whole.
    Outcome turnOn() const;

    /// Removes the file. One that is not there is removed already.
    Outcome turnOff() const;

private:
    const std::filesystem::path file_;
};

} // namespace quillo
