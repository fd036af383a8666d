#include "app/ExportTarget.h"

#include "app/Translated.h"
#include "base/Log.h"
#include "store/Export.h"
#include "unicode/DateFormat.h"

#include <QFile>
#include <QSaveFile>
#include <filesystem>
#include <optional>
#include <utility>

namespace quillo {

namespace {

/// On the queue. The name of the file is not for the log.
void write(const std::filesystem::path& path, const std::string& document) {
    QSaveFile file(QFile::decodeName(path.c_str()));
    const auto size = static_cast<qint64>(document.size());
    // Unbuffered, as QSaveFile commits also when what it still had in its buffer could not be written.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        file.write(document.data(), size) != size || !file.commit())
        log("the list could not be exported: " + file.errorString().toStdString());
}

} // namespace

ExportTarget::ExportTarget(ExportTargetDependencies dependencies) : with_(std::move(dependencies)) {}

void ExportTarget::exportMarkdown() {
    save({.title = translated(QT_TRANSLATE_NOOP("Quillo", "Export as Markdown")),
          .suggestedName = "Quillo.md",
          .kind = translated(QT_TRANSLATE_NOOP("Quillo", "Markdown")),
          .ending = "md"},
         [tasks = with_.tasks(), zone = with_.calendar.zone(), locale = with_.calendar.locale()] {
             return markdownExport(tasks, unicode::DateFormat(zone, locale));
         });
}

void ExportTarget::exportJson() {
    save({.title = translated(QT_TRANSLATE_NOOP("Quillo", "Export as JSON")),
          .suggestedName = "Quillo.json",
          .kind = translated(QT_TRANSLATE_NOOP("Quillo", "JSON")),
          .ending = "json"},
         [tasks = with_.tasks()] { return jsonExport(tasks); });
}

/// The list does not change any more, so that its document can wait for the file, and for the queue: long
/// lists take a while.
void ExportTarget::save(const SaveQuestion& question, Document document) {
    with_.panel.ask(question,
                    [this, document = std::move(document)](const std::optional<std::filesystem::path>& path) {
                        if (path)
                            queue_.post([path = *path, document] { write(path, document()); });
                    });
}

} // namespace quillo
