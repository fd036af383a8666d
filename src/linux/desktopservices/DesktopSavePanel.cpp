#include "linux/desktopservices/DesktopSavePanel.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QLocale>
#include <QStandardPaths>
#include <utility>

namespace quillo {

DesktopSavePanel::~DesktopSavePanel() {
    for (const QPointer<QFileDialog>& panel : panels_)
        delete panel;
}

void DesktopSavePanel::ask(const SaveQuestion& question, Answer answer) {
    if (qtTexts_.isEmpty() && qtTexts_.load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                                            QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&qtTexts_);
    auto* panel = new QFileDialog;
    std::erase(panels_, nullptr);
    panels_.emplace_back(panel);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setWindowModality(Qt::NonModal);
    panel->setWindowTitle(QString::fromStdString(question.title));
    panel->setAcceptMode(QFileDialog::AcceptSave);
    panel->setFileMode(QFileDialog::AnyFile);
    const QString ending = QString::fromStdString(question.ending);
    panel->setNameFilter(QStringLiteral("%1 (*.%2)").arg(QString::fromStdString(question.kind), ending));
    panel->setDefaultSuffix(ending);
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    panel->setDirectory(QDir(documents).exists() ? documents : QDir::homePath());
    panel->selectFile(QString::fromStdString(question.suggestedName));
    QObject::connect(panel, &QFileDialog::finished, panel, [panel, answer = std::move(answer)](int result) {
        const QStringList files = panel->selectedFiles();
        if (result != QFileDialog::Accepted || files.isEmpty() || files.front().isEmpty())
            answer(std::nullopt);
        else
            answer(std::filesystem::path(QFile::encodeName(files.front()).toStdString()));
    });
    panel->show();
    panel->raise();
    panel->activateWindow();
}

} // namespace quillo
