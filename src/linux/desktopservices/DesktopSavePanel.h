/// The desktop's dialog for saving files.
#pragma once

#include "ports/SavePanel.h"

#include <QFileDialog>
#include <QPointer>
#include <QTranslator>
#include <vector>

namespace quillo {

/// The dialog of the desktop's platform theme, the portal's for one, or else Qt's own. Needs a QApplication.
class DesktopSavePanel final : public SavePanel {
public:
    DesktopSavePanel() = default;

    /// Closes the panels that are still open.
    ~DesktopSavePanel() override;

    DesktopSavePanel(const DesktopSavePanel&) = delete;
    DesktopSavePanel& operator=(const DesktopSavePanel&) = delete;

    void ask(const SaveQuestion& question, Answer answer) override;

private:
    QTranslator qtTexts_;                       ///< those of Qt's own dialog, loaded with the first panel
    std::vector<QPointer<QFileDialog>> panels_; ///< null once they have closed
};

} // namespace quillo
