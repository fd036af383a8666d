/// The desktop's dialog for saving files.
#pragma once

#include "linux/desktopservices/FileDialogs.h"
#include "ports/SavePanel.h"

namespace quillo {

/// See FileDialogs.
class DesktopSavePanel final : public SavePanel {
public:
    void ask(const SaveQuestion& question, Answer answer) override;

private:
    FileDialogs dialogs_;
};

} // namespace quillo
