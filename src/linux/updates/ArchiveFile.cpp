#include "linux/updates/ArchiveFile.h"

#include "base/Log.h"

#include <QDir>
#include <QFileInfo>
#include <span>
#include <string>

namespace quillo {

namespace {

constexpr int mostNames = 100;

/// The name, or with a number before its ending: quillo-1.2.tar.gz, quillo-1.2 (2).tar.gz ...
QString numbered(const QString& name, int number) {
    if (number == 1)
        return name;
    qsizetype ending = name.lastIndexOf(QLatin1Char('.'));
    if (ending > 0 && name.left(ending).endsWith(QLatin1String(".tar")))
        ending -= 4;
    if (ending <= 0)
        ending = name.size();
    return name.left(ending) + QStringLiteral(" (%1)").arg(number) + name.mid(ending);
}

} // namespace

void ArchiveFile::open() {
    const QString folder = folder_();
    QDir().mkpath(folder);
    file_ = std::make_unique<QTemporaryFile>(folder + QStringLiteral("/.quillo-XXXXXX.part"));
    written_ = file_->open();
}

void ArchiveFile::append(const QByteArray& part) {
    if (!file_)
        open();
    written_ = written_ && file_->write(part) == part.size();
}

Updater::DownloadResult ArchiveFile::keep(const QString& name, std::uint64_t length,
                                          const QByteArray& signature, const ReleaseKeys& keys) {
    if (!file_)
        return UpdateFailure::archiveWrongSize; // Nothing came.
    const auto notWritable = [&] {
        log("the archive cannot be kept: " + file_->errorString().toStdString());
        return UpdateFailure::archiveNotWritable;
    };
    if (!written_ || !file_->flush())
        return notWritable();
    if (static_cast<std::uint64_t>(file_->size()) != length)
        return UpdateFailure::archiveWrongSize;
    const uchar* bytes = file_->map(0, file_->size());
    if (bytes == nullptr)
        return notWritable();
    // What was written, not what was received: it is the file that is handed on.
    if (!keys.haveSigned(
            std::as_bytes(std::span(signature.data(), static_cast<std::size_t>(signature.size()))),
            std::as_bytes(std::span(bytes, length))))
        return UpdateFailure::archiveForged;
    const QString folder = folder_();
    for (int number = 1; number <= mostNames && !givenUp_; ++number) {
        const QString path = folder + QLatin1Char('/') + numbered(name, number);
        if (QFileInfo::exists(path) || !file_->rename(path))
            continue;
        file_->setAutoRemove(false);
        return std::filesystem::path(path.toStdString());
    }
    return notWritable();
}

} // namespace quillo
