#include "linux/desktopservices/FileDialogs.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QLocale>
#include <QStandardPaths>
#include <utility>

namespace quillo {

FileDialogs::~FileDialogs() {
    for (const QPointer<QFileDialog>& dialog : dialogs_)
        delete dialog;
}

QFileDialog& FileDialogs::make(const std::string& title) {
    if (qtTexts_.isEmpty() && qtTexts_.load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                                            QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&qtTexts_);
    auto* dialog = new QFileDialog;
    std::erase(dialogs_, nullptr);
    dialogs_.emplace_back(dialog);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::NonModal);
    dialog->setWindowTitle(QString::fromStdString(title));
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    dialog->setDirectory(QDir(documents).exists() ? documents : QDir::homePath());
    return *dialog;
}

void FileDialogs::show(QFileDialog& dialog,
                       std::function<void(std::optional<std::filesystem::path>)> answer) {
    QObject::connect(&dialog, &QFileDialog::finished, &dialog,
                     [dialog = &dialog, answer = std::move(answer)](int result) {
                         const QStringList files = dialog->selectedFiles();
                         if (result != QFileDialog::Accepted || files.isEmpty() || files.front().isEmpty())
                             answer(std::nullopt);
                         else
                             answer(std::filesystem::path(QFile::encodeName(files.front()).toStdString()));
                     });
    dialog.show();
    dialog.raise();
    dialog.activateWindow();
}

} // namespace quillo
