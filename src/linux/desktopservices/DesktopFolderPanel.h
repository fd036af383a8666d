/// The desktop's dialog for choosing a folder.
#pragma once

#include "linux/desktopservices/FileDialogs.h"
#include "ports/FolderPanel.h"

namespace quillo {

/// See FileDialogs.
class DesktopFolderPanel final : public FolderPanel {
public:
    void ask(const FolderQuestion& question, Answer answer) override;

private:
    FileDialogs dialogs_;
};

} // namespace quillo
