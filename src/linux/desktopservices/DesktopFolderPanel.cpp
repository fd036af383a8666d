#include "linux/desktopservices/DesktopFolderPanel.h"

#include <utility>

namespace quillo {

void DesktopFolderPanel::ask(const FolderQuestion& question, Answer answer) {
    QFileDialog& panel = dialogs_.make(question.title);
    panel.setAcceptMode(QFileDialog::AcceptOpen);
    panel.setFileMode(QFileDialog::Directory);
    panel.setOption(QFileDialog::ShowDirsOnly);
    if (!question.folder.empty())
        panel.setDirectory(QString::fromStdString(question.folder));
    FileDialogs::show(panel, std::move(answer));
}

} // namespace quillo
