/// The desktop's dialogs for files.
#pragma once

#include <QFileDialog>
#include <QPointer>
#include <QString>
#include <QTranslator>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace quillo {

/// The dialogs of the desktop's platform theme, the portal's for one, or else Qt's own. Needs a QApplication;
/// belongs to the main thread.
class FileDialogs {
public:
    FileDialogs() = default;

    /// Closes those that are still open.
    ~FileDialogs();

    FileDialogs(const FileDialogs&) = delete;
    FileDialogs& operator=(const FileDialogs&) = delete;

    /// One that blocks no other window, begins in the user's documents, and goes when it is closed.
    QFileDialog& make(const std::string& title);

    /// Shows it. Calls `answer` once, later, with what was chosen.
    static void show(QFileDialog& dialog, std::function<void(std::optional<std::filesystem::path>)> answer);

private:
    QTranslator qtTexts_;                        ///< those of Qt's own dialog, loaded with the first
    std::vector<QPointer<QFileDialog>> dialogs_; ///< null once they have closed
};

} // namespace quillo
