#include "linux/desktopservices/DesktopSavePanel.h"

#include <utility>

namespace quillo {

void DesktopSavePanel::ask(const SaveQuestion& question, Answer answer) {
    QFileDialog& panel = dialogs_.make(question.title);
    panel.setAcceptMode(QFileDialog::AcceptSave);
    panel.setFileMode(QFileDialog::AnyFile);
    const QString ending = QString::fromStdString(question.ending);
    panel.setNameFilter(QStringLiteral("%1 (*.%2)").arg(QString::fromStdString(question.kind), ending));
    panel.setDefaultSuffix(ending);
    panel.selectFile(QString::fromStdString(question.suggestedName));
    FileDialogs::show(panel, std::move(answer));
}

} // namespace quillo
